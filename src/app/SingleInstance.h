#pragma once

#include <QLocalServer>
#include <QObject>
#include <QString>
#include <QStringList>

class QLocalSocket;

namespace tillery {

// One window per person and settings file: a later start hands its folders
// to the window already running, through a local socket named after the
// user and the settings file, and ends.
class SingleInstance final : public QObject {
    Q_OBJECT

public:
    explicit SingleInstance(const QString &settingsFile, QObject *parent = nullptr);

    // Hands the folders (absolute paths) to the running instance; false when
    // none answers in time, a hung one included.
    bool handOver(const QStringList &folders);
    // Waits for later starts, taking over the socket of an instance that
    // died or no longer answers.
    bool listen();
    // The socket's name, or its path when it lives in the user's runtime folder.
    const QString &serverName() const { return m_serverName; }

Q_SIGNALS:
    // A later start asked for the window, with these folders to open.
    void foldersHandedOver(const QStringList &folders);

private:
    void receive(QLocalSocket *socket);

    QString m_serverName;
    QLocalServer m_server;
};

} // namespace tillery
