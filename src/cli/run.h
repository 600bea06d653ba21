// One run of the program, from its arguments to its exit status.
#pragma once

namespace tagmend {

/// 0 when the operands are done, whatever became of single files, and after the usage and version
/// texts; 1 when the command line is in error or asks for no edit.
int run(int argc, char** argv);

}  // namespace tagmend
