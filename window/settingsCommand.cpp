#include "window/settingsCommand.h"

#include "base/excludes.h"
#include "base/settingsTable.h"
#include "window/menu/menus.h"

using modSettings::Effect;
using modSettings::Key;
using modSettings::Kind;

void SettingsCommand::run() {
    SettingsSheet sheet(dependencies_.store, dependencies_.settings, dependencies_.applicationFolder);
    dependencies_.dialogs.settings(sheet);
    follow(sheet);
}

// What takes effect at the next start is read then. Exact figures come last, because they may scan.
void SettingsCommand::follow(const SettingsSheet& sheet) {
    bool listsChanged = false;
    bool exact = dependencies_.settings.exact();
    bool onDisk = dependencies_.settings.onDisk();
    for (const std::string_view name : sheet.stored()) {
        const Key& key = modSettings::keyNamed(name);
        if (name == "exact") {
            exact = sheet.value(key) == "1";
        } else if (name == "onDisk") {
            onDisk = sheet.value(key) == "1";
        } else if (key.kind == Kind::patterns) {
            dependencies_.settings.setExcludes(modExcludes::load(dependencies_.store));
            dependencies_.header.refresh();
        } else if (!isPath(key.kind) && key.effect != Effect::nextStart) {
            dependencies_.settings.setText(name, sheet.value(key));
            listsChanged = listsChanged || isOfList(key.kind);
        }
    }
    modMenus::setMark(dependencies_.menu, "ShowOwners", dependencies_.settings.getOwnerInfo());
    if (listsChanged) {
        dependencies_.views.refreshActiveView();
    }
    if (onDisk != dependencies_.settings.onDisk()) {
        dependencies_.notices.setOnDisk(onDisk);
    }
    if (exact != dependencies_.settings.exact()) {
        dependencies_.notices.toggleExact();
    }
}
