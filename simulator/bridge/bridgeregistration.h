#pragma once

#include <QString>
#include <QStringList>

// The symbolic links through which others find the bridge's pseudo-terminal: one in
// the per-user runtime folder that the port list scans, and any the user asked for.
// They go when the registration does.
class BridgeRegistration
{
public:
    BridgeRegistration() = default;
    BridgeRegistration(const BridgeRegistration &) = delete;
    BridgeRegistration &operator=(const BridgeRegistration &) = delete;
    ~BridgeRegistration();

    // Empty on success, otherwise what went wrong. The listed link NAME gets a file
    // NAME.pid beside it with this process's id, by which a link that outlived a killed
    // bridge is told apart from a live one: its terminal's number is soon reused.
    QString addListed(const QString &portName, const QString &target);
    QString addLink(const QString &linkPath, const QString &target);

private:
    QStringList links;
    QString pidFile;
};
