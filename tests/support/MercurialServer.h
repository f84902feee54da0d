#pragma once

#include <QProcess>
#include <QString>

namespace tillery::test {

// "hg serve" for a repository on 127.0.0.1, on a free port, for as long as
// the object lives.
class MercurialServer {
public:
    explicit MercurialServer(const QString &repositoryPath);
    ~MercurialServer();
    MercurialServer(const MercurialServer &) = delete;
    MercurialServer &operator=(const MercurialServer &) = delete;

    int port() const { return m_port; }
    // "http://" + userInfo + "127.0.0.1:<port>/"; userInfo such as "ann:pw@".
    QString address(const QString &userInfo = QString()) const;

private:
    QProcess m_process;
    int m_port = 0;
};

} // namespace tillery::test
