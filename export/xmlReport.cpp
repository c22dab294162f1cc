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

// The document's "path" elements, found by their path with the same result as a search through the whole
// document: the first in document order. A search expression treats A to Z like a to z; an exact report does
// not.
class PathElements {
public:
    using Position = std::size_t; // in order of creation
    static constexpr Position root = 0;

    PathElements(pugi::xml_node rootNode, bool exact) : exact_(exact) {
        elements_.push_back({rootNode, root, 0});
    }

    // The root if there is no such element.
    [[nodiscard]] Position find(std::string_view path) {
        const auto found = firstByPath_.find(keyOf(path));
        return found == firstByPath_.end() ? root : found->second;
    }

    pugi::xml_node append(Position parent, std::string_view path) {
        const pugi::xml_node node = elements_[parent].node.append_child("path");
        if (!node) {
            throw std::bad_alloc();
        }
        const Position created = elements_.size();
        elements_.push_back({node, parent, elements_[parent].depth + 1});
        const auto [entry, isNew] = firstByPath_.try_emplace(keyOf(path), created);
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

    // Document order. Children are only appended, so siblings are in order of creation.
    [[nodiscard]] bool precedes(Position left, Position right) const {
        const bool leftIsHigher = elements_[left].depth < elements_[right].depth;
        while (elements_[left].depth > elements_[right].depth) {
            left = elements_[left].parent;
        }
        while (elements_[right].depth > elements_[left].depth) {
            right = elements_[right].parent;
        }
        if (left == right) {
            return leftIsHigher; // one contains the other, and comes first
        }
        while (elements_[left].parent != elements_[right].parent) {
            left = elements_[left].parent;
            right = elements_[right].parent;
        }
        return left < right;
    }

    const std::string& keyOf(std::string_view path) {
        key_.assign(path);
        for (char& c : key_) {
            c = exact_ ? c : platform::asciiLower(c);
        }
        return key_;
    }

    std::vector<Element> elements_;
    std::unordered_map<std::string, Position> firstByPath_;
    std::string key_;
    bool exact_;
};

void appendText(pugi::xml_node parent, const char* name, std::string_view text) {
    std::string held(text);
    modExport::moveForbiddenCharacters(held, modExport::Document::xml);
    std::string escaped;
    modExport::appendXmlEscaped(escaped, held);
    parent.append_child(name).text().set(escaped.c_str());
}

void appendData(pugi::xml_node element, modExport::ReportRows& rows, const std::string& path) {
    appendText(element, "pathName", path);
    appendText(element, "sizeBytes", rows.storedSize());
    std::string size;
    rows.appendShownSize(size);
    appendText(element, "size", size);
    appendText(element, "dateAccessed", rows.dateAccessed());
    appendText(element, "dateModified", rows.dateModified());
    if (rows.withOwner()) {
        // Odd on purpose: unless the report is exact, the owner is stored under this name.
        appendText(element, rows.exact() ? "owner" : "dateModified", rows.owner());
    }
    appendText(element, "type", rows.type());
}

void buildDocument(pugi::xml_document& document, modExport::ReportRows& rows) {
    document.append_child(pugi::node_comment).set_value(rows.title().c_str());
    PathElements elements(document.append_child("root"), rows.exact());
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
            // A search expression cannot contain a quote, so the search fails; scans never record one.
            const bool cannotBeSearched = !rows.exact() && parentFolder.find('"') != std::string_view::npos;
            parent =
                cannotBeSearched ? PathElements::root : elements.find(platform::displayPath(parentFolder));
            previousParentFolder.assign(parentFolder);
        }
        path.clear();
        rows.appendPath(path);
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
                                   modExport::writeXmlReport);
}

void modExport::writeXmlReport(ReportRows& rows, platform::Sink& sink) {
    pugi::xml_document document;
    buildDocument(document, rows);
    SinkWriter writer(sink);
    document.save(writer, "", pugi::format_raw | pugi::format_no_declaration | pugi::format_no_escapes);
}
