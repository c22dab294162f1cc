#include "export/htmlReport.h"

#include "base/dateFormat.h"
#include "export/html5Report.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

using platform::lineEnd;

constexpr std::size_t pathWidth = 55;

bool isAlphanumeric(char c) {
    const char lower = platform::asciiLower(c);
    return (lower >= 'a' && lower <= 'z') || (c >= '0' && c <= '9');
}

// Whether a browser shows another character for the text behind an "&". It takes "&lt" and the like without
// their semicolon too.
bool formsEntity(std::string_view text) {
    for (const char* start : {"lt", "LT", "gt", "GT", "amp", "AMP", "quot", "QUOT"}) {
        if (text.starts_with(start)) {
            return true;
        }
    }
    if (text.starts_with('#')) {
        return text.size() > 1 && isAlphanumeric(text[1]);
    }
    std::size_t end = 0;
    while (end < text.size() && isAlphanumeric(text[end])) {
        ++end;
    }
    return end > 0 && text.substr(end, 1) == ";";
}

// Escapes the characters that names on Windows cannot contain. Odd on purpose: & stays, unless the value was
// loaded and the & forms an entity.
void appendEscaped(std::string& result, std::string_view text, bool isLoaded) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (c == '<' || c == '>' || c == '"') {
            result.append(c == '<' ? "&lt;" : c == '>' ? "&gt;" : "&quot;");
        } else if (isLoaded && (c == '\r' || c == '\n')) {
            result.append(c == '\r' ? "&#13;" : "&#10;");
        } else if (isLoaded && c == '&' && formsEntity(text.substr(i + 1))) {
            result.append("&amp;");
        } else {
            result.push_back(c);
        }
    }
}

template <class Append>
void appendInPieces(std::string& result, std::string_view text, std::size_t width, Append append) {
    while (width > 0 && text.size() > width) {
        const std::string_view piece = platform::firstCharacters(text, width);
        if (piece.size() == text.size()) {
            break;
        }
        append(result, piece);
        result.append("<BR>");
        text.remove_prefix(piece.size());
    }
    append(result, text);
}

std::string pageHead(const std::string& title, bool withOwner) {
    std::string head;
    const auto line = [&head](const auto&... pieces) { (head.append(pieces), ...).append(lineEnd); };
    const auto headerCell = [&line](std::string_view name) {
        line("    <td><FONT color=midnightblue face=Arial size=2><STRONG>", name, "</STRONG></FONT></td>");
    };
    // Odd on purpose: a second <HEAD> instead of the closing tag.
    line("<HTML><HEAD><TITLE>", title, "</TITLE><HEAD><BODY><P align=center>");
    line("<TABLE cellSpacing=0 cellPadding=1 align=left border=1 style='BORDER-TOP: 0px; BORDER-LEFT-WIDTH: "
         "0px; FONT-SIZE: smaller; BORDER-BOTTOM-WIDTH: 0px; WIDTH: 800px; BORDER-RIGHT-WIDTH: 0px' "
         "borderColor=gainsboro bgColor=whitesmoke background=''>");
    line("  <TR><TD colspan=", withOwner ? "7" : "6", "><P align=center><FONT face=Arial size=2><br><STRONG>",
         title, "</STRONG></FONT></P><br></TD></TR>");
    line("  <TR>");
    // The trailing no-break spaces widen the columns.
    headerCell("Path");
    headerCell("Size&nbsp;(Bytes)");
    headerCell("Size&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;");
    headerCell("Date&nbsp;Accessed&nbsp;&nbsp;&nbsp;");
    headerCell("Date&nbsp;Modified&nbsp;&nbsp;&nbsp;");
    if (withOwner) {
        headerCell("Owner");
    }
    headerCell("Type&nbsp;&nbsp;&nbsp;");
    line("  </TR>");
    return head;
}

} // namespace

bool modGlobal::exportHTMLSizeReport(const modExport::ReportContext& context, std::string_view query,
                                     std::string_view fileName) {
    return modExport::exportReport(context, {"exportHTMLSizeReport"}, query, fileName,
                                   modExport::writeHtmlReport);
}

std::string modGlobal::htmlPathString(std::string_view text, std::size_t width) {
    std::string result;
    appendInPieces(result, text, width, [](std::string& to, std::string_view piece) { to.append(piece); });
    return result;
}

void modExport::writeHtmlReport(ReportRows& rows, platform::Sink& sink) {
    if (rows.exact()) {
        writeHtml5Report(rows, sink);
        return;
    }
    sink.write(pageHead(rows.title(), rows.withOwner()));
    std::string path;
    std::string cells;
    std::string shownDate;
    const auto escaped = [isLoaded = rows.areLoaded()](std::string& to, std::string_view text) {
        appendEscaped(to, text, isLoaded);
    };
    const auto date = [&](std::string_view stored) {
        shownDate.clear();
        modFormat::appendReformattedDate(shownDate, stored, modFormat::reportDatePicture);
        cells.append("    <td> ");
        escaped(cells, shownDate);
        cells.append(" </td>").append(lineEnd);
    };
    for (; !rows.atEnd(); rows.next()) {
        path.clear();
        rows.appendPath(path);
        cells.assign("  <TR>").append(lineEnd).append("    <td>");
        appendInPieces(cells, path, pathWidth, escaped);
        cells.append("</td>").append(lineEnd).append("    <td> ");
        cells.append(rows.storedSize()).append(" </td>").append(lineEnd).append("    <td>");
        rows.appendShownSize(cells);
        cells.append("</td>").append(lineEnd);
        date(rows.dateAccessed());
        date(rows.dateModified());
        if (rows.withOwner()) {
            cells.append("    <td>");
            escaped(cells, rows.owner());
            cells.append("&nbsp;</td>").append(lineEnd);
        }
        cells.append("    <td>").append(rows.type()).append("</td>").append(lineEnd);
        cells.append("  </TR>").append(lineEnd);
        sink.write(cells);
    }
    cells.assign("</TABLE>").append(lineEnd).append("</P></BODY></HTML>").append(lineEnd);
    sink.write(cells);
}
