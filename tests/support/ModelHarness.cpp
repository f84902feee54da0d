#include "ModelHarness.h"

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTest>

using namespace Qt::StringLiterals;

namespace tillery::test {

ModelHarness::ModelHarness()
    : m_settings(std::make_unique<QSettings>(m_folder.filePath(u"settings.ini"_s), QSettings::IniFormat))
{
}

AppModel &ModelHarness::start()
{
    m_model.reset();
    m_model = std::make_unique<AppModel>(
        AppModelServices{*m_settings, prompts, desktop, iconFolder(), nullptr, watchedFolderLimit});
    m_model->start();
    return *m_model;
}

bool ModelHarness::settle(int timeoutMilliseconds)
{
    const auto idle = [this] { return m_model->isIdle(); };
    const QDeadlineTimer deadline(timeoutMilliseconds);
    while (!deadline.hasExpired()) {
        QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
        if (idle()) {
            // The last piece's continuation is queued by now.
            QCoreApplication::processEvents();
            QCoreApplication::processEvents();
            if (idle())
                return true;
        }
        QTest::qSleep(2);
    }
    return false;
}

bool ModelHarness::adopt(const RepositoryFixture &repository)
{
    m_model->adoptRepository(repository.repository());
    return settle();
}

WorkingFile workingFile(const AppModel &model, const QString &path)
{
    for (const WorkingFile &file : model.workspace().snapshot().files) {
        if (file.path == path)
            return file;
    }
    qFatal("no working file %s", qPrintable(path));
}

} // namespace tillery::test
