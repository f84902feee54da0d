#include "ui/ScreenshotTour.h"

#include "model/AppModel.h"
#include "model/DemoRepositories.h"
#include "ui/CredentialDialog.h"
#include "ui/CommandLogWindow.h"
#include "ui/MainWindow.h"
#include "ui/Palettes.h"
#include "ui/Screenshot.h"
#include "ui/SettingsWindow.h"

#include <QApplication>
#include <QDeadlineTimer>
#include <QDir>
#include <QTabWidget>
#include <QTableView>
#include <QTemporaryDir>
#include <QThread>

using namespace Qt::StringLiterals;

namespace tillery {

void waitUntilIdle(const AppModel &model)
{
    const QDeadlineTimer deadline(60000);
    int quietTurns = 0;
    while (!deadline.hasExpired() && quietTurns < 5) {
        QApplication::processEvents(QEventLoop::AllEvents, 20);
        quietTurns = model.isIdle() ? quietTurns + 1 : 0;
        QThread::msleep(10);
    }
}

void showPage(AppModel &model, const QString &tab, const QString &file)
{
    const bool history = tab == u"history";
    if (tab == u"shelves") {
        model.setTab(WorkspaceTab::shelves);
        waitUntilIdle(model);
        return;
    }
    model.setTab(history ? WorkspaceTab::history : WorkspaceTab::changes);
    waitUntilIdle(model);
    if (history) {
        if (model.workspace().snapshot().history.isEmpty())
            return;
        model.selectChangeset(model.workspace().snapshot().history.first());
        waitUntilIdle(model);
    }
    const QList<WorkingFile> files =
        history ? model.diffSelection().changesetFiles() : model.workspace().snapshot().files;
    for (const WorkingFile &candidate : files) {
        if (candidate.path == file || (file.isEmpty() && !history)) {
            if (history)
                model.selectChangesetFile(candidate);
            else
                model.selectChangeFiles({candidate});
            break;
        }
    }
    waitUntilIdle(model);
}

namespace {

struct SheetPicture {
    QString name;
    Workspace::Sheet sheet;
};

} // namespace

QStringList takeScreenshotTour(MainWindow &window, AppModel &model, const QList<Repository> &repositories,
                               const QString &folder)
{
    QStringList written;
    const auto save = [&](QWidget &widget, const QString &name) {
        QApplication::processEvents();
        const QString path = QDir(folder).filePath(name + u".png"_s);
        if (saveScreenshot(widget, path))
            written.append(path);
    };
    const QPalette light = QApplication::palette();
    for (const bool dark : {false, true}) {
        QApplication::setPalette(dark ? darkPalette() : light);
        const QString scheme = dark ? u"dark-"_s : u"light-"_s;
        window.show();
        for (const Repository &repository : repositories) {
            model.select(repository);
            waitUntilIdle(model);
            for (const QString &tab : {u"changes"_s, u"history"_s, u"shelves"_s}) {
                showPage(model, tab, tab == u"changes" ? u"src/main.c"_s : QString());
                save(window, scheme + rawValue(repository.kind) + u'-' + tab);
            }
            const QString name = scheme + rawValue(repository.kind);
            // The new function of main.c chosen for the commit with TODO.txt, the loop left for later.
            showPage(model, u"changes"_s, u"src/main.c"_s);
            model.setSelectedFilePaths({u"TODO.txt"_s});
            model.setShownLinesChosen(3, 7, true);
            model.setCommitSummary(u"Add the tide check"_s);
            save(window, name + u"-changes-partial"_s);
            model.setShownLinesChosen(0, model.diffSelection().diff().unifiedLines.size() - 1, false);
            model.setSelectedFilePaths({});
            model.setCommitSummary(QString());
            // A search, then the oldest match's file annotated.
            model.searchHistory(u"the"_s);
            waitUntilIdle(model);
            save(window, name + u"-history-search"_s);
            model.selectChangeset(model.historyBrowser().changesets().first());
            waitUntilIdle(model);
            model.annotate(u"README.md"_s);
            waitUntilIdle(model);
            save(window, name + u"-annotate"_s);
            model.closeAnnotation();
            model.searchHistory(QString());
            waitUntilIdle(model);
        }
        // A merge stopped by a conflict: the banner above the Changes page, the conflicted file's diff.
        {
            const QTemporaryDir merging(QDir::tempPath() + u"/tillery-merging-XXXXXX"_s);
            const Repository repository = makeMergingDemoRepository(merging.path());
            model.adoptRepository(repository);
            waitUntilIdle(model);
            showPage(model, u"changes"_s, u"src/main.c"_s);
            save(window, scheme + u"git-merge-conflict"_s);
            model.remove(repository);
            waitUntilIdle(model);
        }
        for (const SheetPicture &picture : {SheetPicture{u"clone"_s, Workspace::Sheet::clone},
                                            SheetPicture{u"new-branch"_s, Workspace::Sheet::bookmark},
                                            SheetPicture{u"repository-settings"_s, Workspace::Sheet::remote},
                                            SheetPicture{u"about"_s, Workspace::Sheet::about}}) {
            model.setSheetShown(picture.sheet, true);
            if (QDialog *sheet = window.sheet(picture.sheet))
                save(*sheet, scheme + u"sheet-"_s + picture.name);
            model.setSheetShown(picture.sheet, false);
        }
        window.openSettings();
        SettingsWindow *settings = window.settingsWindow();
        const QStringList tabs{u"general"_s, u"appearance"_s, u"integrations"_s};
        for (int index = 0; index < tabs.size(); ++index) {
            settings->tabs()->setCurrentIndex(index);
            save(*settings, scheme + u"settings-"_s + tabs[index]);
        }
        settings->close();
        // A remote's question for a password.
        {
            CredentialDialog dialog(&window, {CredentialRequest::Kind::secret, u"hg.example.org"_s,
                                              u"Password for 'https://alice@hg.example.org/tides':"_s, QString()});
            dialog.show();
            save(dialog, scheme + u"password-prompt"_s);
        }
        if (!dark) {
            CommandLogWindow *log = showCommandLog(model, &window);
            log->table()->selectRow(0);
            save(*log, scheme + u"command-log"_s);
            log->close();
        }
    }
    QApplication::setPalette(light);
    return written;
}

} // namespace tillery
