#include "app/window/chartCommands.h"

#include <string>

#include "app/workApart.h"
#include "export/reportFrame.h"
#include "platform/files.h"
#include "views/widgets/chartPicture.h"

void ChartCommands::exportChart(bool entire) {
    const std::string file = choice_.toWrite(std::string(ChartPicture::filter), ".png");
    if (file.empty()) {
        return;
    }
    const BusyPointer busy(with_.userInterface);
    const ShownProgress progress(with_.userInterface, 0);
    const ChartPicture picture(with_.views.chartAsShown(),
                               entire ? ChartPicture::Portion::entire : ChartPicture::Portion::visible,
                               ChartPicture::formatOf(file));
    workApart(with_.userInterface, [&] {
        const QByteArray bytes = picture.bytes();
        platform::replaceFile(file, {bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
    modExport::showSaved(with_.userInterface, file);
}
