#pragma once

#include <QString>
#include <string_view>

// Texts and paths in Qt's types. (The program's own texts convert with QString::fromUtf8 alone.)
namespace modQt {

// The system's form of an internal path, for Qt's file classes.
[[nodiscard]] QString nativePath(std::string_view internalPath);

// The form in which the window shows a text with names as they are on the disk: U+FFFD for invalid bytes; and
// for control characters, which would break the line or be invisible, their Unicode symbols (U+2400 to
// U+2421).
[[nodiscard]] QString shownText(std::string_view text);

// The same for an internal name or path.
[[nodiscard]] QString shownName(std::string_view internalName);
[[nodiscard]] QString shownPath(std::string_view internalPath);

// The same for a folder, without a separator at the end unless it is a drive's root.
[[nodiscard]] QString shownFolder(std::string_view internalPath);

// A text for a tool tip, which would otherwise interpret a name such as "<b>" as markup.
[[nodiscard]] QString tip(const QString& text);

// A long text for a tool tip, in lines: a tip breaks lines only at blanks, and a name may have 255 characters
// without one.
[[nodiscard]] QString inLines(const QString& text);

} // namespace modQt
