// The bytes of a settings.ini, and in its first line what is written into it: SECTION=KEY=VALUE.

#include "base/clsRegSettings.h"
#include "base/clsSettings.h"
#include "base/errorLogFiles.h"
#include "fuzz/support/input.h"
#include "fuzz/support/require.h"
#include "fuzz/support/rootPath.h"
#include "platform/files.h"
#include "platform/linux/iniFile.h"
#include "platform/profile.h"
#include "support/temporaryFolder.h"

namespace {

using platform::IniText;

void requireEdits(const IniText& before, std::string_view section, std::string_view key,
                  std::string_view value) {
    const std::string_view wanted = platform::trimmed(value);
    IniText after = before;
    if (!after.setValue(section, key, value)) {
        require(after.toBytes() == before.toBytes(), "what cannot be written changes nothing");
        return;
    }
    const bool sameName = platform::equalIgnoringAsciiCase(platform::trimmed(key), "databasePath");
    if (isUtf8(section) && isUtf8(key) && isUtf8(value) && !platform::trimmed(key).empty()) {
        require(after.value(section, key) == wanted, "what was written is read");
        const auto again = IniText::fromBytes(after.toBytes());
        require(again && again->value(section, key) == wanted, "also from the file");
    }
    if (!sameName) {
        require(after.value("application_settings", "databasePath") ==
                    before.value("application_settings", "databasePath"),
                "other keys stay");
    }
    const bool removed = after.removeKey(section, key);
    require(removed || platform::trimmed(key).empty(), "what was written can be removed");
    after.removeSection(section);
}

void requireSoundSettings(const TemporaryFolder& folder) {
    clsRegSettings store;
    clsSettings settings;
    settings.load(store, rootPath(folder));
    require(!settings.databasePath().empty() || !store.isCut("application_settings", "databasePath"),
            "a path that is too long is not used");
    static_cast<void>(dontUseNetwork(store));
    static_cast<void>(modGlobal::errorLogFiles(store, rootPath(folder)));

    settings.setLvwFSortColumn(-7);
    settings.setGetOwnerInfo(!settings.getOwnerInfo());
    settings.save(store);
    clsSettings saved;
    saved.load(store, rootPath(folder));
    if (IniText::fromBytes(folder.read("settings.ini"))) {
        require(saved.lvwFSortColumn() == settings.lvwFSortColumn() &&
                    saved.getOwnerInfo() == settings.getOwnerInfo(),
                "what was saved is loaded");
    }
    require(saved.databasePath() == settings.databasePath(), "a path is not changed by saving");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    Input input(data, size);
    Input edit(data, input.upTo('\n').size());
    const std::string_view section = edit.upTo('=');
    const std::string_view key = edit.upTo('=');

    const auto text = IniText::fromBytes(input.rest());
    if (text) {
        require(text->toBytes() == input.rest(), "reading and writing keeps every byte");
        requireEdits(*text, section, key, edit.rest());
    }
    static const TemporaryFolder folder;
    folder.write("settings.ini", input.rest());
    requireSoundSettings(folder);
    return 0;
}
