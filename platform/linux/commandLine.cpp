#include "platform/commandLine.h"

namespace platform {

CommandLine::CommandLine(int count, char** arguments)
    : count_(count), pointers_(arguments, arguments + count + 1) {}

} // namespace platform
