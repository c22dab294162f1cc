#include "export/xmlReport.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <pugixml.hpp>
#include <random>
#include <vector>

#include "export/reportFormats.h"
#include "platform/paths.h"
#include "platform/text.h"
#include "support/reportFixture.h"

namespace {

const std::string query = modExport::reportQuery(modExport::ReportFormat::xml, 2);

std::string xml(ReportFixture& fixture) {
    return fixture.written(query, modExport::writeXmlReport);
}

std::string lowered(std::string text) {
    std::transform(text.begin(), text.end(), text.begin(), platform::asciiLower);
    return text;
}

// Each element's size, which is unique here, preceded by that of its parent.
std::string nestingOf(const pugi::xml_document& document) {
    std::string result;
    for (const pugi::xpath_node& found : document.select_nodes("//path")) {
        const pugi::xml_node element = found.node();
        result.append(element.parent().child_value("sizeBytes")).append(">");
        result.append(element.child_value("sizeBytes")).append(" ");
    }
    return result;
}

// Only the nesting, found by searching the document for every row's parent.
std::string nestedBySearching(ReportFixture& fixture) {
    pugi::xml_document document;
    document.append_child("root");
    pugi::xml_node parent;
    std::string previous;
    const auto rows = fixture.database->OpenRecordset(query);
    for (; !rows->EndOfFile(); rows->MoveNext()) {
        if (previous.empty()) {
            parent = document.child("root");
        }
        const std::string folder(rows->Fields("parentFolder").text());
        if (folder != previous) {
            const std::string search = "//path[translate(pathName, 'ABCDEFGHIJKLMNOPQRSTUVWXYZ', "
                                       "'abcdefghijklmnopqrstuvwxyz') = \"" +
                                       lowered(platform::displayPath(folder)) + "\"]";
            parent = document.select_node(search.c_str()).node();
            parent = parent ? parent : document.child("root");
        }
        previous = folder;
        pugi::xml_node element = parent.append_child("path");
        const std::string path =
            std::string(rows->Fields("drive").text()) + std::string(rows->Fields("fullPath").text());
        element.append_child("pathName").text().set(platform::displayPath(path).c_str());
        element.append_child("sizeBytes").text().set(std::string(rows->Fields("size").text()).c_str());
    }
    return nestingOf(document);
}

} // namespace

TEST(XmlReport, elementsAndTextsAreThose) {
    ReportFixture fixture;
    fixture.options.detail = 2;
    fixture.settings.setGetOwnerInfo(true);
    const std::string root = testSystem::root();
    fixture.add(
        {"A\\", 2048, "03/14/2004 09:05:07 PM", "never", "<R&D>\x02\xFF\xEF\xBF\xBE\t\r\uF002", true, root});
    fixture.add({"A\\b\\", 1, "", "", "", true, root + "a\\"});
    fixture.add({"q\"\\", 1, "", "", "", true, root + "none\\"});
    fixture.add({"q\"\\r\\", 1, "", "", "", true, root + "q\"\\"}); // a query cannot contain a quote
    const std::string report = xml(fixture);
    EXPECT_THAT(
        report,
        testing::StartsWith(
            "<!--" + fixture.title + "--><root><path><pathName>" + shown("A\\") +
            "</pathName>"
            "<sizeBytes>2048</sizeBytes><size>2.0 Kb</size><dateAccessed>03/14/2004 09:05:07 "
            "PM</dateAccessed>"
            "<dateModified>never</"
            "dateModified><dateModified>&lt;R&amp;D&gt;\uF002\uEFFF\uEFEF\uEFBF\uEFBE\t&#13;"
            "\uEFEF\uEF80\uEF82</dateModified><type>Folder</type><path><pathName>" +
            shown("A\\b\\") +
            "</pathName><sizeBytes>1</sizeBytes><size>1 bytes"
            "</size><dateAccessed></dateAccessed><dateModified></dateModified><dateModified></dateModified>"
            "<type>Folder</type></path></path><path><pathName>" +
            shown("q\"\\") + "</pathName>"));
    fixture.settings.setGetOwnerInfo(false);
    pugi::xml_document document;
    ASSERT_TRUE(document.load_string(xml(fixture).c_str()));
    EXPECT_EQ(document.select_nodes("/root/path").size(), 3U);
    EXPECT_EQ(document.select_nodes("/root/path/dateModified").size(), 3U);

    fixture.settings.setGetOwnerInfo(true);
    fixture.settings.setExact(true);
    ASSERT_TRUE(document.load_string(xml(fixture).c_str()));
    EXPECT_EQ(nestingOf(document), ">2048 >1 >1 1>1 ") << "a is not A, and a quote is a letter";
    EXPECT_EQ(document.select_nodes("//path/dateModified").size(), 4U);
    EXPECT_EQ(document.select_nodes("//path/type/preceding-sibling::owner").size(), 4U);
}

TEST(XmlReport, nestsAsASearchThroughTheWholeDocumentWould) {
    std::mt19937 random(11);
    const std::array names{"a", "A", "b", "B", "\xC3\x84", "\xC3\xA4"};
    for (int round = 0; round < 60; ++round) {
        ReportFixture fixture;
        const std::string root = testSystem::root();
        std::vector<std::string> paths{root};
        for (int i = 0; i < 60; ++i) {
            const std::string parent = paths[random() % paths.size()];
            const std::string path = parent + names[random() % names.size()] + "\\";
            paths.push_back(path);
            // Some rows name a parent in another case, a missing one, or none.
            const std::array parents{parent, parent, parent, lowered(parent), parent + "x\\", std::string()};
            const std::string& named = parents[random() % parents.size()];
            const std::string stored = i % 20 == 7 ? "q\"\\" : path.substr(root.size());
            fixture.add({stored, static_cast<double>(i), "", "", "", true, i % 20 == 8 ? "" : named});
        }
        pugi::xml_document document;
        ASSERT_TRUE(document.load_string(xml(fixture).c_str()));
        ASSERT_EQ(nestingOf(document), nestedBySearching(fixture)) << round;
    }
}

TEST(XmlReport, deepNestingDoesNotExhaustTheStack) {
    ReportFixture fixture;
    for (int level = 100001; level < 105001; ++level) {
        fixture.add({std::to_string(level) + "\\", 1, "", "", "", true,
                     testSystem::root() + std::to_string(level - 1) + "\\"});
    }
    const std::string report = xml(fixture);
    EXPECT_EQ(report.find("</path>"), report.rfind("<type>") + std::string("<type>Folder</type>").size());
}
