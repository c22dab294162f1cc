#pragma once

#include <optional>
#include <string>
#include <string_view>

// The process's surroundings. All paths are internal paths; folders end in "\".
namespace platform {

// The variable's value; nothing when it is unset. Empty is a value.
[[nodiscard]] std::optional<std::string> environmentVariable(std::string_view name);

[[nodiscard]] std::string executableFolder();

// Where a user's own data of this program belongs ($XDG_DATA_HOME/spannory\, %LOCALAPPDATA%\Spannory\).
[[nodiscard]] std::string userDataFolder();

// Where the installed program's read-only files are (beside the executable, or ../share/spannory).
[[nodiscard]] std::string shareFolder();

[[nodiscard]] std::string temporaryFolder();

// True when new files can be made in the folder.
[[nodiscard]] bool folderIsWritable(std::string_view path);

// True when the user's session has a display that windows can be shown on.
[[nodiscard]] bool hasDisplay();

// From here on the system shows no boxes of its own, such as one that asks for a disk where a drive is empty:
// the call that wanted it fails.
void keepSystemBoxesAway();

// Starts the program associated with the file's type on it, and does not wait for it; false when the system's
// opener cannot be started. What it makes of the file it tells the user itself.
bool openInAssociatedProgram(std::string_view path);

// True where the system's dialog for saving changes the name's extension by itself when another file type is
// chosen in it.
[[nodiscard]] bool saveDialogFollowsFileType() noexcept;

} // namespace platform
