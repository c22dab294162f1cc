#include "window/commands/chartCommands.h"

#include <QString>
#include <string>

#include "base/dateFormat.h"
#include "base/runInBackground.h"
#include "export/reportFrame.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "widgets/chartPicture.h"

void ChartCommands::exportChart(bool entire) {
    const std::string file = choice_.toWrite(std::string(ChartPicture::filter), ".png");
    if (file.empty()) {
        return;
    }
    const BusyPointer busy(dependencies_.userInterface);
    const ShownProgress progress(dependencies_.userInterface, 0);
    const std::string date =
        modFormat::formatDate(platform::localTime(platform::now()), modFormat::reportDatePicture);
    const ChartPicture picture(dependencies_.views.chartAsShown(),
                               entire ? ChartPicture::Portion::entire : ChartPicture::Portion::visible,
                               ChartPicture::formatOf(file), QString::fromStdString(date));
    runInBackground(dependencies_.userInterface, [&] {
        const QByteArray bytes = picture.bytes();
        platform::replaceFile(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    modExport::showSaved(dependencies_.userInterface, file);
}
