#pragma once

#include <cstdint>
#include <string>
#include <string_view>

// Builds a long text out of many small pieces in a buffer that grows ahead of need. Counts characters; texts
// go in and come out as UTF-8.
class clsConcat {
public:
    // Empties the builder.
    void ReInit();

    // The built text. After a piece that did not fit (see SConcat) it may be shorter than what was appended.
    [[nodiscard]] std::string GetString() const;

    // Fills the buffer with the text and spare room, but deliberately leaves the count of used characters as
    // it was: a following SConcat on a new builder overwrites the text.
    void SetString(std::string_view text);

    // Appends the text. A piece of more than 15000 characters that is no longer than the text so far is cut
    // to the room that one growth step adds, though counted in full; deliberately kept. Raises 6 when the
    // count leaves the 32-bit range.
    void SConcat(std::string_view text);

private:
    std::u32string buffer_; // padded with NUL characters
    std::int32_t used_ = 0;
};
