#include "cli/run.h"

int main(int argc, char** argv) { return tagmend::run(argc, argv); }
