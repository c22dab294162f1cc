#include "window/commands/chartCommands.h"

#include <QString>
#include <string>

#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "export/reportFrame.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "widgets/chartPicture.h"
#include "widgets/treemapPicture.h"

void ChartCommands::exportChart(bool entire) {
    const std::string file = choice_.toWrite(std::string(ChartPicture::filter), ".png");
    if (file.empty()) {
        return;
    }
    const BusyPointer busy(dependencies_.userInterface);
    const ShownProgress progress(dependencies_.userInterface, 0);
    const std::string date =
        modFormat::formatDate(platform::localTime(platform::now()), modFormat::reportDatePicture);
    const ChartPicture::Portion portion =
        entire ? ChartPicture::Portion::entire : ChartPicture::Portion::visible;
    const auto save = [&](const auto& picture) {
        runInBackground(dependencies_.userInterface, [&] {
            const QByteArray bytes = picture.bytes();
            platform::replaceFile(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
        });
    };
    if (dependencies_.views.showsTreemap()) {
        save(TreemapPicture(dependencies_.views.treemapAsShown(), portion, ChartPicture::formatOf(file),
                            QString::fromStdString(date)));
    } else {
        save(ChartPicture(dependencies_.views.chartAsShown(), portion, ChartPicture::formatOf(file),
                          QString::fromStdString(date)));
    }
    modExport::showSaved(dependencies_.userInterface, file);
}
