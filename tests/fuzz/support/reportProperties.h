#pragma once

#include <cstddef>
#include <string_view>

// Properties of reports that hold for any rows, found by other means than the writers'. `rows` is the number
// of rows.

// No value forms or ends a tag, an attribute, a line or, in an exact page, an entity; `benign` is the page of
// one row of plain values, and `twice` that of two.
void requireSoundPage(std::string_view page, std::size_t rows, std::string_view benign,
                      std::string_view twice, bool exact);

// A table of `columns` columns as of RFC 4180, whose texts are no formulas. With `allQuoted`, every field is
// in quotes.
void requireSoundCsv(std::string_view text, std::size_t rows, std::size_t columns, bool allQuoted);

// A document with a "path" element for each row.
void requireSoundXml(std::string_view document, std::size_t rows);

// A workbook whose parts are XML documents, without formulas.
void requireSoundWorkbook(std::string_view archive);
