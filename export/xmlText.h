#pragma once

#include <string>
#include <string_view>

namespace modExport {

// Kinds of documents of Unicode text, by the characters that they cannot contain. XML: control characters
// other than TAB, LF and CR. HTML 5: those other than TAB and LF, and U+0080 to U+009F. A workbook has its
// own codes for control characters.
enum class Document { xml, html5, workbook };

// Replaces everything that the document cannot contain by the form that names have inside the program: a
// control character becomes U+F000 + its code, and each byte of anything else (invalid UTF-8, U+FFFE and the
// like) U+EF00 + the byte. Characters that already have this form (U+F000 to U+F01F, U+F07F, U+EF80 to
// U+EFFF) are converted too, so that every text can be restored. Most texts contain nothing of this kind and
// are only scanned.
void moveForbiddenCharacters(std::string& text, Document document);

// Appends the text with &, < and > as entities, and with CR as one, because readers turn a plain CR into LF.
void appendXmlEscaped(std::string& result, std::string_view text);

// The same for HTML 5, in contents and in quoted values. Line breaks and tabs become codes, because an editor
// might change them. What the document cannot contain is replaced first.
void appendHtmlEscaped(std::string& result, std::string text);
// The same of a text that has nothing of that kind.
void appendHtmlEntities(std::string& result, std::string_view text);

} // namespace modExport
