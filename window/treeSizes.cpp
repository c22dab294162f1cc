#include "window/treeSizes.h"

#include "base/clsFile.h"
#include "base/errorTrap.h"
#include "base/formatSize.h"
#include "tree/nodeKeys.h"
#include "views/folderSummary.h"
#include "window/menu/menus.h"

namespace {

const QString stateKey = QStringLiteral("treeSizes");

} // namespace

void TreeSizes::set(bool shown) {
    shown_ = shown;
    modMenus::setMark(dependencies_.menu, "TreeSizes", shown);
    dependencies_.tree.setRemarks(shown ? [this](const std::string& key) { return sizeOf(key); }
                                        : FolderTree::Remarks());
}

void TreeSizes::refresh() {
    if (shown_ && !dependencies_.search.isBulkLoad()) {
        dependencies_.tree.forgetRemarks();
    }
}

// While a scan fills an empty table, each look would read the whole table.
QString TreeSizes::sizeOf(const std::string& key) const {
    if (!modNodeKeys::isFolderKey(key) || !dependencies_.database.isOpen() ||
        dependencies_.search.isBulkLoad()) {
        return {};
    }
    return modGlobal::trapped(
        "frmMain", "sizeOf",
        [&] {
            // A drive has no row, and may hold just some folders that were scanned for themselves.
            const bool isDrive = clsFile(key).fullPathNoDrive().empty();
            const auto size = isDrive && !dependencies_.selection.wasScanned(key)
                                  ? std::nullopt
                                  : modFigures::scannedSize(dependencies_.database.database(), key);
            return size ? QString::fromStdString(modLvw::formatSize(*size)) : QStringLiteral("");
        },
        modGlobal::Logging::quiet); // it is called while the tree is painted
}

void TreeSizes::restore(const QSettings& state) {
    set(state.value(stateKey).toBool());
}

void TreeSizes::save(QSettings& state) const {
    state.setValue(stateKey, shown_);
}
