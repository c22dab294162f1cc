#include "export/xmlReport.h"

#include <new>
#include <pugixml.hpp>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "export/xmlText.h"
#include "platform/files.h"
#include "platform/paths.h"
#include "platform/text.h"

namespace {

// The document's "path" elements, found by their path text as a search through the whole document would
// find them: ignoring the case of A to Z, the first in document order.
class PathElements {
public:
    using Position = std::size_t; // in order of creation
    static constexpr Position root = 0;

    explicit PathElements(pugi::xml_node rootNode) { elements_.push_back({rootNode, root, 0}); }

    // The root when there is no such element.
    [[nodiscard]] Position find(std::string_view path) {
        if (path.find('"') != std::string_view::npos) {
            return root; // deliberate: a search expression cannot hold a quote, so that the search fails
        }
        const auto found = firstByPath_.find(lowered(path));
        return found == firstByPath_.end() ? root : found->second;
    }

    pugi::xml_node append(Position parent, std::string_view path) {
        const pugi::xml_node node = elements_[parent].node.append_child("path");
        if (!node) {
            throw std::bad_alloc();
        }
        const Position created = elements_.size();
        elements_.push_back({node, parent, elements_[parent].depth + 1});
        const auto [entry, isNew] = firstByPath_.try_emplace(lowered(path), created);
        if (!isNew && precedes(created, entry->second)) {
            entry->second = created;
        }
        return node;
    }

private:
    struct Element {
        pugi::xml_node node;
        Position parent;
        std::size_t depth;
    };

    // Document order. Children are only ever appended, so siblings stand in order of creation.
    [[nodiscard]] bool precedes(Position left, Position right) const {
        const bool leftIsHigher = elements_[left].depth < elements_[right].depth;
        while (elements_[left].depth > elements_[right].depth) {
            left = elements_[left].parent;
        }
        while (elements_[right].depth > elements_[left].depth) {
            right = elements_[right].parent;
        }
        if (left == right) {
            return leftIsHigher; // one is within the other, which begins first
        }
        while (elements_[left].parent != elements_[right].parent) {
            left = elements_[left].parent;
            right = elements_[right].parent;
        }
        return left < right;
    }

    const std::string& lowered(std::string_view path) {
        key_.assign(path);
        for (char& c : key_) {
            c = platform::asciiLower(c);
        }
        return key_;
    }

    std::vector<Element> elements_;
    std::unordered_map<std::string, Position> firstByPath_;
    std::string key_;
};

void appendText(pugi::xml_node parent, const char* name, std::string& text) {
    modExport::replaceForbiddenCharacters(text);
    parent.append_child(name).text().set(text.c_str());
}

void appendData(pugi::xml_node element, modExport::ReportRows& rows, const std::string& path) {
    std::string text;
    const auto put = [&](const char* name, std::string_view value) {
        text.assign(value);
        appendText(element, name, text);
    };
    put("pathName", path);
    put("sizeBytes", rows.storedSize());
    text.clear();
    rows.appendShownSize(text);
    appendText(element, "size", text);
    put("dateAccessed", rows.dateAccessed());
    put("dateModified", rows.dateModified());
    if (rows.withOwner()) {
        put("dateModified", rows.owner()); // deliberate: the owner goes by this name
    }
    put("type", rows.type());
}

void buildDocument(pugi::xml_document& document, modExport::ReportRows& rows) {
    document.append_child(pugi::node_comment).set_value(rows.title().c_str());
    PathElements elements(document.append_child("root"));
    Field& parentField = rows.field("parentFolder");
    PathElements::Position parent = PathElements::root;
    std::string previousParentFolder;
    std::string path;
    for (; !rows.atEnd(); rows.next()) {
        if (previousParentFolder.empty()) {
            parent = PathElements::root;
        }
        const std::string_view parentFolder = parentField.text();
        if (parentFolder != previousParentFolder) {
            path.clear();
            platform::appendDisplayPath(path, parentFolder);
            modExport::replaceForbiddenCharacters(path);
            parent = elements.find(path);
            previousParentFolder.assign(parentFolder);
        }
        path.clear();
        rows.appendPath(path);
        modExport::replaceForbiddenCharacters(path);
        appendData(elements.append(parent, path), rows, path);
    }
}

class SinkWriter final : public pugi::xml_writer {
public:
    explicit SinkWriter(platform::Sink& sink) : sink_(sink) {}
    void write(const void* data, std::size_t size) override {
        sink_.write({static_cast<const char*>(data), size});
    }

private:
    platform::Sink& sink_;
};

} // namespace

bool modGlobal::exportXMLSizeReport(const modExport::ReportContext& context, std::string_view query,
                                    std::string_view fileName) {
    return modExport::exportReport(context, {"exportXMLSizeReport"}, query, fileName,
                                   [fileName](modExport::ReportRows& rows) {
                                       platform::TextSink text;
                                       modExport::writeXmlReport(rows, text);
                                       platform::replaceFile(fileName, text.text());
                                   });
}

void modExport::writeXmlReport(ReportRows& rows, platform::Sink& sink) {
    pugi::xml_document document;
    buildDocument(document, rows);
    SinkWriter writer(sink);
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration);
}
