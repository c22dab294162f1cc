#pragma once

#include <optional>
#include <string>
#include <string_view>

// The process's environment. All paths are internal paths; folders end in "\".
namespace platform {

// The variable's value, which may be empty; nothing if the variable is not set.
[[nodiscard]] std::optional<std::string> environmentVariable(std::string_view name);

// The name of this machine, without its domain if the system knows it so; empty if it has none.
[[nodiscard]] std::string hostName();

// The operating system with its version, for people: "Debian GNU/Linux 12 (bookworm)", "Windows 10.0.19045".
[[nodiscard]] std::string systemName();

[[nodiscard]] std::string executableFolder();

// The folder for the user's own data of this program ($XDG_DATA_HOME/spannory\, %LOCALAPPDATA%\Spannory\).
[[nodiscard]] std::string userDataFolder();

// The folder of the installed program's read-only files (beside the executable, or ../share/spannory).
[[nodiscard]] std::string shareFolder();

[[nodiscard]] std::string temporaryFolder();

// True if new files can be created in the folder.
[[nodiscard]] bool folderIsWritable(std::string_view path);

// True if the user's session has a display that can show windows.
[[nodiscard]] bool hasDisplay();

// From here on, the system shows no message boxes of its own, such as a request for a disk when a drive is
// empty; the call fails instead.
void keepSystemBoxesAway();

// From here on, a write beyond the largest file that the user may have fails like one to a full disk, instead
// of ending the program.
void letTooLargeWritesFail();

// Starts the application associated with the file's type, without waiting for it. False if the system's
// opener cannot be started; the opener itself reports any later problem to the user.
bool openInAssociatedProgram(std::string_view path);

// True if the system's save dialog adjusts the name's extension when the user chooses another file type.
[[nodiscard]] bool saveDialogFollowsFileType() noexcept;

} // namespace platform
