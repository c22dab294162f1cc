#include "console/collectedRun.h"

#include "base/terminalText.h"
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
    question.top = static_cast<std::size_t>(options().top);
    question.days = options().days;
    modServer::requireSchema(server);
    const platform::Seconds now = platform::now();
    const modCollected::Figures figures = modCollected::ask(server, question, now);
    if (figures.of(Table::machines).empty()) {
        fail(server.url().shown(), "There is no scan of this on the server");
        return;
    }
    print(collectedTables(figures, question, now));
    write([&](const Output& output, clsUserInterface& userInterface) {
        const modCollected::CollectedTable table(figures, *output.format == modExport::ReportFormat::html);
        modExport::exportListFile(*output.format, table, "Collected on " + server.url().shown(),
                                  userInterface, output.file, true);
    });
}
