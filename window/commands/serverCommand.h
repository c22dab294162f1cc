#pragma once

#include <QSettings>
#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "collect/collectedScan.h"
#include "db/workingDatabase.h"
#include "window/commands/databaseCommands.h"
#include "window/dialogs/clsDialogs.h"
#include "window/windowInterface.h"

// The command that loads a scan from a server on which scans are collected.
class ServerCommand {
public:
    // Nothing is owned.
    struct Dependencies {
        QWidget& window;
        WorkingDatabase& database;
        DatabaseCommands& databases;
        WindowInterface& userInterface;
        clsDialogs& dialogs;
    };

    explicit ServerCommand(const Dependencies& dependencies) : dependencies_(dependencies) {}

    // Asks which one. What was loaded, for people; nothing if that was cancelled or, after a message, failed.
    [[nodiscard]] std::optional<std::string> load();

    // The server's URL, which holds no password.
    void restore(const QSettings& state);
    void save(QSettings& state) const;

private:
    [[nodiscard]] modCollected::Fetched fetch(const ServerScan& chosen, std::string& title);

    Dependencies dependencies_;
    QString url_;
};
