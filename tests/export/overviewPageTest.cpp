#include "export/overviewPage.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <regex>
#include <set>

#include "base/errorLog.h"
#include "db/dao.h"
#include "export/pageText.h"
#include "platform/text.h"
#include "support/scanFixture.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// The places in a page, and the links to them.
struct Places {
    std::set<std::string> ids;
    std::vector<std::string> links;
};

const std::set<std::string>& elementNames() {
    static const std::set<std::string> names{
        "html",  "head", "meta", "title", "style",  "body",   "header",  "h1",      "h2",
        "h3",    "p",    "nav",  "ul",    "li",     "a",      "bdi",     "section", "dl",
        "dt",    "dd",   "div",  "svg",   "rect",   "g",      "span",    "table",   "thead",
        "tbody", "tr",   "th",   "td",    "footer", "script", "details", "summary"};
    return names;
}

void noteAttributes(const std::string& list, Places& places) {
    static const std::set<std::string> attributes{"lang",
                                                  "charset",
                                                  "http-equiv",
                                                  "content",
                                                  "name",
                                                  "class",
                                                  "id",
                                                  "href",
                                                  "scope",
                                                  "viewBox",
                                                  "role",
                                                  "width",
                                                  "preserveAspectRatio",
                                                  "height",
                                                  "x",
                                                  "data-v",
                                                  "aria-hidden",
                                                  "aria-label",
                                                  "open"};
    static const std::regex attribute(" ([A-Za-z-]+)=\"([^\"]*)\"");
    for (std::sregex_iterator each(list.begin(), list.end(), attribute), end; each != end; ++each) {
        EXPECT_TRUE(attributes.contains((*each)[1])) << list;
        if ((*each)[1] == "id") {
            EXPECT_TRUE(places.ids.insert((*each)[2]).second) << list;
        } else if ((*each)[1] == "href") {
            places.links.push_back((*each)[2]);
        }
    }
}

class OverviewPage : public testing::Test, protected ScanFixture {
public:
    OverviewPage() { modGlobal::setErrorLog(&userInterface); }
    ~OverviewPage() override { modGlobal::setErrorLog(); }
    OverviewPage(const OverviewPage&) = delete;
    OverviewPage& operator=(const OverviewPage&) = delete;

protected:
    std::string page(std::vector<std::string> folders) {
        return modExport::overviewPage(
            {working.database(), userInterface, search.gaps, *settings.excludes(), std::move(folders)});
    }

    // A row as a saved scan could hold it.
    void add(const std::string& parent, const std::string& name, double size, bool isFolder,
             const std::string& text) {
        const auto rows = working.database().OpenRecordset("details");
        rows->AddNew();
        const std::string fileName = name + (isFolder ? "\\" : "");
        for (const char* field : {"extension", "owner", "dateModified", "dateInserted", "description"}) {
            rows->Fields(field).setText(text);
        }
        rows->Fields("parentFolder").setText(parent);
        rows->Fields("fileName").setText(fileName);
        rows->Fields("scanCompleteTime").setText(text);
        rows->Fields("size").setNumber(size);
        rows->Fields("isFolder").setInteger(isFolder ? 1 : 0);
        rows->Update();
    }

    // Elements and attributes that the page is made of, each element closed, each link to a place in the
    // page.
    static void expectSound(const std::string& text);
};

void OverviewPage::expectSound(const std::string& text) {
    static const std::regex tag("^<(/?)([a-z0-9]+)((?: [A-Za-z-]+=\"[^\"<>]*\")*)(/?)>");
    std::vector<std::string> open;
    Places places;
    ASSERT_TRUE(text.starts_with("<!DOCTYPE html>\n"));
    for (std::size_t at = text.find('<', 1); at != std::string::npos; at = text.find('<', at)) {
        std::smatch found;
        const std::string piece = text.substr(at, 1000);
        ASSERT_TRUE(std::regex_search(piece, found, tag)) << piece.substr(0, 100);
        ASSERT_TRUE(elementNames().contains(found[2])) << found[0];
        noteAttributes(found[3], places);
        if (found[1] == "/") {
            ASSERT_FALSE(open.empty());
            ASSERT_EQ(open.back(), found[2]) << text.substr(at < 200 ? 0 : at - 200, 300);
            open.pop_back();
        } else if (found[4] != "/" && found[2] != "meta") {
            open.push_back(found[2]);
        }
        at += static_cast<std::size_t>(found.length());
        if (found[1] != "/" && (found[2] == "style" || found[2] == "script")) {
            at = text.find("</", at);
        }
    }
    EXPECT_THAT(open, IsEmpty());
    for (const std::string& link : places.links) {
        EXPECT_TRUE(link.starts_with('#') && places.ids.contains(link.substr(1))) << link;
    }
}

TEST_F(OverviewPage, tellsOfAScan) {
    tree.write("a/b/c/deep.bin", std::string(5000, 'x'));
    tree.write("a/note.txt", std::string(100, 'x'));
    tree.write("hidden/file", "x");
    std::filesystem::create_directories(tree / "empty");
    settings.setExact(true);
    settings.setGetOwnerInfo(false);
    scan();
    search.gaps.add(key("hidden"), FigureGaps::Kind::unreadable, "Permission denied");
    search.gaps.addFile(key("a"), "gone", "It vanished");
    const std::string text = page({key()});
    expectSound(text);
    for (const char* part :
         {"<dt>Total size</dt><dd>5.0 Kb</dd>", "<dt>Files</dt><dd>3</dd>", "<dt>Folders</dt><dd>5</dd>",
          "1 folder and 1 file could not be read", "Permission denied", "It vanished",
          "Exact: every file is counted in full", "<bdi>b</bdi>", "<bdi>c</bdi>", "1 file directly in it",
          "data-v=\"5000\">4.9 Kb</td>", "They were not looked up", "Of the 3 largest files"}) {
        EXPECT_THAT(text, HasSubstr(part));
    }
    EXPECT_THAT(text.substr(text.find("<h3>Empty Folders")), HasSubstr("empty</bdi>"));
    search.gaps.addWrapped(key("a"));
    EXPECT_THAT(page({key()}), HasSubstr("Not exact: 1 file of 2 GB or more is counted with wrapped sizes"));
    EXPECT_THAT(page({key("empty")}), HasSubstr("Exact: "));
    EXPECT_THAT(text, Not(HasSubstr("Left out")));
    Excludes excludes;
    excludes.add("*.tmp");
    excludes.add("<b>");
    settings.setExcludes(std::move(excludes));
    EXPECT_THAT(page({key()}), HasSubstr("<dt>Left out</dt><dd>What fits *.tmp, &lt;b&gt;</dd>"));
}

TEST_F(OverviewPage, namesNoOtherPlace) {
    tree.write("file", "x");
    scan();
    EXPECT_THAT(page({key()}), Not(HasSubstr("://")));
}

TEST_F(OverviewPage, isNotDisturbedByWhatRowsHold) {
    const std::string top = "/\\top\\";
    const char* const hostile[] = {"</title><script>alert(1)</script>",
                                   "\"><img src=x onerror=alert(1)>",
                                   "' onclick='x",
                                   "&lt;b&gt; &#60;",
                                   "a\nb\rc\td\x01\x1b[31m\x7f",
                                   "\xff\xfe\xc3",
                                   "\u202Efdp.exe",
                                   "\xe2\x81\xa6isolate",
                                   "\xef\xbf\xbe\xef\xb7\x90\xc2\x85",
                                   "]]>",
                                   "<!--",
                                   "-->",
                                   "{{x}}",
                                   "</style>"};
    double size = 1;
    working.database().setHoldsLoadedRows(true);
    for (const char* text : hostile) {
        add(top, text, size, false, text);
        add(top, text, size++, true, text);
        add(top + text + "\\", text, size++, true, text);
        add(top + text + "\\", "file", size++, false, text);
        search.gaps.add(top + text + "\\", FigureGaps::Kind::unreadable, text);
    }
    std::vector<std::string> folders{top};
    for (const char* text : hostile) {
        folders.push_back(top + text + "\\");
    }
    const std::string text = page(folders);
    expectSound(text);
    EXPECT_THAT(text, HasSubstr("12 of 15 folders shown."));
    for (std::size_t position = 0; position < text.size();) {
        const char32_t c = platform::decodeCodePoint(text, position);
        ASSERT_TRUE((c >= 0x20 && c < 0x7F) || c == '\n' || (c >= 0xA0 && c != 0xFFFE && c < 0x110000))
            << static_cast<unsigned>(c);
        ASSERT_FALSE((c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069))
            << static_cast<unsigned>(c);
    }
    EXPECT_THAT(text, HasSubstr("\\342\\200\\256fdp.exe"));
}

// The most that fits is told: all three levels of an ordinary folder, and fewer of many strange ones.
TEST_F(OverviewPage, staysSmall) {
    const std::string worst(255, '"');
    std::vector<std::string> folders;
    const auto named = [&](int number) { return std::to_string(number) + worst.substr(4); };
    working.database().BeginTrans();
    for (int top = 0; top < 14; ++top) {
        const std::string key = "/\\" + named(top) + "\\";
        folders.push_back(key);
        for (int i = 0; i < 20; ++i) {
            const std::string first = key + named(i) + "\\";
            add(key, named(i), 1e12 + i, true, worst);
            add(first, worst, 1e9, false, worst.substr(4) + std::to_string(top * 20 + i));
            for (int j = 0; j < 10; ++j) {
                add(first, named(j), 1e11 + j, true, worst);
                for (int k = 0; k < 6; ++k) {
                    add(first + named(j) + "\\", named(k), 0, true, worst);
                }
            }
        }
    }
    working.database().CommitTrans();
    for (const std::size_t count : {1U, 2U, 5U, 14U}) {
        SCOPED_TRACE(count);
        const std::string text = page({folders.begin(), folders.begin() + static_cast<int>(count)});
        EXPECT_LE(text.size(), modExport::largestOverview);
        EXPECT_GT(text.size(), modExport::largestOverview / 4);
        expectSound(text);
        if (count == 1) {
            EXPECT_THAT(text, HasSubstr("id=\"f1-15-8\"")) << "the third level";
        }
    }
}

TEST_F(OverviewPage, isWrittenOrReplacesNothing) {
    EXPECT_FALSE(
        modExport::exportOverview({working.database(), userInterface, search.gaps, *settings.excludes(), {}},
                                  application.typed("page.html")));
    EXPECT_THAT(userInterface.messages, ElementsAre("No data to export."));
    tree.write("file", "x");
    scan();
    application.write("page.html", "old");
    working.database().Execute("delete * from nodes");
    EXPECT_TRUE(modExport::exportOverview(
        {working.database(), userInterface, search.gaps, *settings.excludes(), {key()}},
        application.typed("page.html")));
    EXPECT_THAT(application.read("page.html"), HasSubstr("</html>\n"));
    EXPECT_THAT(userInterface.opened, ElementsAre(application.typed("page.html")));
    EXPECT_FALSE(userInterface.progressVisible);
    EXPECT_EQ(userInterface.busyDepth, 0);
}

TEST(PageText, cutsInTheMiddle) {
    const struct {
        const char* text;
        std::size_t most;
        const char* shown;
    } cases[] = {
        {"abcdefghij", 10, "abcdefghij"},
        {"abcdefghijk", 10, "abcd\u2026ghijk"},
        {"\u00e4\u00f6\u00fc\u00df\u20ac\U0001F600", 5, "\u00e4\u00f6\u2026\u20ac\U0001F600"},
        {"<&>", 3, "&lt;&amp;&gt;"},
        {"", 3, ""},
    };
    for (const auto& each : cases) {
        std::string html;
        modExport::appendShown(html, each.text, each.most);
        EXPECT_EQ(html, each.shown);
    }
    EXPECT_EQ(modExport::percentText(1, 10000), "&lt;0.1%");
    EXPECT_EQ(modExport::percentText(1, 0), "");
    EXPECT_EQ(modExport::percentText(-1, 5), "");
    EXPECT_EQ(modExport::percentText(1, 3), "33.3%");
}

} // namespace
