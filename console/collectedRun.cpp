#include "console/collectedRun.h"

#include "base/numberFormat.h"
#include "collect/collectedFigures.h"
#include "collect/collectedTable.h"
#include "collect/httpClient.h"
#include "collect/password.h"
#include "collect/server.h"
#include "console/collectedTables.h"
#include "export/listFile.h"
#include "platform/clock.h"
#include "platform/terminal.h"

void CollectedRun::answer() {
    using modCollected::Table;
    HttpClient server(parseServerUrl(options().collectedUrl), collectPassword(options().collectPasswordFile),
                      [] { return !platform::wasInterrupted(); });
    modCollected::Question question;
    question.host = options().host;
    question.path = options().paths.empty() ? "" : modCollected::folderPath(options().paths.front());
    question.onDisk = options().onDisk.value_or(false);
    question.top = hasOutputs() ? 0 : static_cast<std::size_t>(options().top); // reports have all rows
    question.days = options().days;
    modServer::requireSchema(server);
    const platform::Seconds now = platform::now();
    const modCollected::Figures figures = modCollected::ask(server, question, now);
    if (figures.of(Table::machines).empty()) {
        const std::string host = question.host.empty() ? "" : " of " + oneSafeLine(question.host);
        const std::string path = question.path.empty() ? "" : " with " + oneSafeLine(question.path);
        fail(server.url().shown(), "There is no scan" + host + path + " on the server");
        return;
    }
    print(collectedTables(figures, question.days, static_cast<std::size_t>(options().top), now));
    for (std::size_t table = 0; table < modCollected::tables; ++table) {
        if (figures.rows.at(table).size() == modCollected::mostRows) {
            fail(modCollected::captionOf(static_cast<Table>(table)),
                 "Only the first " + modFormat::countText(static_cast<double>(modCollected::mostRows)) +
                     " rows were asked for.");
        }
    }
    write([&](const Output& output, clsUserInterface& userInterface) {
        const modCollected::CollectedTable table(figures, *output.format == modExport::ReportFormat::html);
        modExport::exportListFile(*output.format, table, "Collected on " + server.url().shown(),
                                  userInterface, output.file, true);
    });
}
