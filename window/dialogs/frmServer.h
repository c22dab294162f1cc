#pragma once

#include <QDialog>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QString>
#include <QVBoxLayout>
#include <atomic>
#include <string>
#include <vector>

#include "base/clsUserInterface.h"
#include "collect/collectedScan.h"
#include "widgets/listView.h"

// A scan on a server, and how to get there.
struct ServerScan {
    std::string url; // as typed
    std::string password;
    modCollected::Found found;
};

// Asks for a server, shows the scans there and lets one be chosen. The password is kept nowhere.
class frmServer final : public QDialog {
    Q_OBJECT

public:
    // Lets events be handled by the interface, which is not owned.
    frmServer(const QString& url, clsUserInterface& userInterface, QWidget* parent);

    [[nodiscard]] ServerScan chosen() const;

    void reject() override; // while scans are read, this ends reading

private:
    void layOut();
    void wire();
    void askServer();
    [[nodiscard]] std::vector<modCollected::Found> scans();
    void list(std::vector<modCollected::Found> scans);
    void say(const QString& text);
    void updateButtons();

    clsUserInterface& userInterface_;
    std::vector<modCollected::Found> scans_;
    bool isReading_ = false;
    std::atomic<bool> isCancelled_ = false;

    QVBoxLayout layout_{this};
    QFormLayout form_;
    QLineEdit txtServer_;
    QLineEdit txtPassword_;
    QHBoxLayout showRow_;
    QLabel lblServer_;
    QPushButton cmdShowScans_;
    ListView lvwServer_;
    QDialogButtonBox buttons_{QDialogButtonBox::Ok | QDialogButtonBox::Cancel};
};
