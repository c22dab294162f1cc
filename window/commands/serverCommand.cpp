#include "window/commands/serverCommand.h"

#include "base/runInBackground.h"
#include "collect/httpClient.h"

namespace {

constexpr char urlKey[] = "collectServer"; // NOLINT: a key of the window's state

} // namespace

std::optional<std::string> ServerCommand::load() {
    const auto chosen = dependencies_.dialogs.serverScan(url_, dependencies_.userInterface);
    if (!chosen) {
        return {};
    }
    url_ = QString::fromStdString(chosen->url);
    try {
        std::string title;
        const modCollected::Fetched fetched = fetch(*chosen, title);
        const auto loadScan = [&] {
            modCollected::load(dependencies_.database, fetched, dependencies_.userInterface);
        };
        return dependencies_.databases.load(loadScan, title) ? std::optional(title) : std::nullopt;
    } catch (const RuntimeError& error) {
        const auto* const said = dynamic_cast<const ServerError*>(&error);
        if (said != nullptr && said->kind() == ServerError::Kind::cancelled) {
            dependencies_.userInterface.status(StatusPanel::folder, "Nothing was loaded.");
        } else {
            dependencies_.userInterface.messageAbout("The scan could not be loaded from the server.",
                                                     error.what());
        }
        return {};
    }
}

modCollected::Fetched ServerCommand::fetch(const ServerScan& chosen, std::string& title) {
    WindowInterface& userInterface = dependencies_.userInterface;
    const WindowInterface::Cancellable work(userInterface, QStringLiteral("Loading from the server"),
                                            dependencies_.window);
    HttpClient server(parseServerUrl(chosen.url), chosen.password, [&] { return !work.isCancelled(); });
    title = modCollected::titleOf(chosen.found, server);
    const modCollected::Found whole = runInBackground(userInterface, [&] {
        return modCollected::find(server, {chosen.found.host, chosen.found.scan, chosen.found.path});
    });
    return modCollected::fetch(dependencies_.database, server, whole, userInterface);
}

void ServerCommand::restore(const QSettings& state) {
    const QString url = state.value(QLatin1String(urlKey)).toString();
    try {
        static_cast<void>(parseServerUrl(url.toStdString()));
        url_ = url;
    } catch (const RuntimeError&) { // garbage
        url_.clear();
    }
}

void ServerCommand::save(QSettings& state) const {
    state.setValue(QLatin1String(urlKey), url_);
}
