#pragma once

#include <chrono>
#include <functional>
#include <string_view>

// Volumes that may never answer: network shares whose server is gone, and file systems served by a program
// that hangs. The calls in platform/folders.h on such volumes give up after `patience`; then, and as long as
// the volume still has not answered, further calls fail at once.
namespace platform {

inline constexpr std::chrono::seconds patience{2};

// The reason that calls on such a volume give.
inline constexpr std::string_view notAnswering = "The volume is not answering";

// True if the path, as far as no link leads elsewhere, is on a volume that may never answer. Asks no volume.
[[nodiscard]] bool mayNotAnswer(std::string_view internalPath);

// Whether the volume that the path leads to answers. Waits for it for at most `patience`, and only as long as
// `goesOn`, which is called some 20 times a second, returns true. True at once if no volume may fail to
// answer.
[[nodiscard]] bool answers(std::string_view internalPath, const std::function<bool()>& goesOn = {});

// True if there is a folder, as far as can be told without asking a volume that may not answer.
[[nodiscard]] bool seemsToBeFolder(std::string_view internalPath);

} // namespace platform
