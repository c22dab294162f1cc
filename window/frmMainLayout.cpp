#include <QHBoxLayout>
#include <QScreen>
#include <memory>

#include "widgets/helpTopic.h"
#include "window/frmMain.h"

// The main window's controls: their names and places.

namespace {

// Grey until another text replaces it.
void showAsHint(QLineEdit& box) {
    QPalette palette;
    palette.setBrush(QPalette::Text, box.palette().placeholderText());
    box.setPalette(palette);
    QObject::connect(&box, &QLineEdit::textChanged, &box, [&box] { box.setPalette({}); });
}

} // namespace

void frmMain::nameControls() {
    central_.setObjectName(QStringLiteral("central"));
    txtPath_.setObjectName(QStringLiteral("txtPath"));
    txtPath_.setText(QStringLiteral("(Type network [UNC] path here)"));
    showAsHint(txtPath_);
    txtPath_.setToolTip(QStringLiteral("Type a path and press Enter to scan that folder (Ctrl+L)"));
    txtPath_.setAcceptDrops(false); // a folder dropped on it goes to the window
    txtPath_.setAccessibleName(QStringLiteral("Folder to scan"));
    cmdGo_.setObjectName(QStringLiteral("cmdGo"));
    cmdGo_.setText(QStringLiteral("&Go"));
    cmdGo_.setToolTip(QStringLiteral("Scan the folder typed on the left"));
    ani_.setObjectName(QStringLiteral("ani"));
    tvw_.setObjectName(QStringLiteral("tvw"));
    imlFiles_.setObjectName(QStringLiteral("imlFiles"));
    imlMenu_.setObjectName(QStringLiteral("imlMenu"));
    tvw_.setAccessibleName(QStringLiteral("Folders"));
    modQt::setHelpTopic(tvw_, "scanning.html");
    modQt::setHelpTopic(txtPath_, "scanning.html");
    modQt::setHelpTopic(cmdGo_, "scanning.html");
    prg_.setAccessibleName(QStringLiteral("Progress"));
    prg_.setObjectName(QStringLiteral("prg"));
    cP_.setObjectName(QStringLiteral("cP"));
    cPLvw_.setObjectName(QStringLiteral("cPLvw"));
    cPItem_.setObjectName(QStringLiteral("cPItem"));
    tbrMenu_.setObjectName(QStringLiteral("tbrMenu"));
    cRebar_.setObjectName(QStringLiteral("cRebar"));
    splitter_.setObjectName(QStringLiteral("splitter"));
    statusBar_.setObjectName(QStringLiteral("statusBar"));
}

void frmMain::layOut() {
    // Sizes are multiples of the line height, so that at first all columns of the files list are visible,
    // whatever the font.
    const int line = fontMetrics().height();
    const QSize usualSize = (QSize(75, 48) * line).boundedTo(screen()->availableSize() * 0.9);
    const int treeWidth = usualSize.width() / 4;
    constexpr QSize smallestSize(480, 320);
    constexpr int animationSide = 24; // as high as the tabs beside it

    nameControls();
    ani_.setFixedSize(animationSide, animationSide);
    prg_.setMaximumWidth(treeWidth);

    auto rows = std::make_unique<QVBoxLayout>();
    auto pathRow = std::make_unique<QHBoxLayout>();
    navigation_.addButtons(*pathRow);
    pathRow->addWidget(&txtPath_, 1);
    pathRow->addWidget(&cmdGo_);
    splitter_.addWidget(&tvw_);
    rightLayout_.setContentsMargins(0, 0, 0, 0);
    rightLayout_.addWidget(&bar_);
    rightLayout_.addWidget(&header_);
    rightLayout_.addWidget(&views_.tabs(), 1);
    rightLayout_.addWidget(&views_.filterBar());
    splitter_.addWidget(&rightSide_);
    views_.tabs().setCornerWidget(&ani_);
    splitter_.setStretchFactor(1, 1);
    splitter_.setChildrenCollapsible(false);
    splitter_.setSizes({treeWidth, usualSize.width() - treeWidth});
    rows->addLayout(pathRow.release());
    rows->addWidget(&splitter_, 1);
    central_.setLayout(rows.release());

    setCentralWidget(&central_);
    statusBar_.addPermanentWidget(&prg_);
    // Its texts begin at the left edge of the tree.
    const int margin = style()->pixelMetric(QStyle::PM_LayoutLeftMargin, nullptr, this);
    statusBar_.setContentsMargins(margin, 0, 0, 0);
    setStatusBar(&statusBar_);
    prg_.hide();
    setMinimumSize(smallestSize);
    resize(usualSize);
    tvw_.setFocus();
}
