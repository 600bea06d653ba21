// Runs a command and prints its peak resident memory in KiB. A program of its own, because a child
// counts the memory of the process that it was forked from until it replaces it.
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>

int main(int argc, char** argv) {
  if (argc < 2) {
    return 2;
  }
  const pid_t child = fork();
  if (child == 0) {
    execv(argv[1], argv + 1);
    _exit(127);
  }
  int status = 0;
  rusage usage = {};
  if (wait4(child, &status, 0, &usage) != child || status != 0) {
    return 1;
  }
  std::printf("%ld\n", usage.ru_maxrss);
  return 0;
}
