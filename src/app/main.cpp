#include "app/SingleInstance.h"
#include "app/TerminationSignal.h"
#include "ui/ApplicationScene.h"
#include "ui/MainWindow.h"
#include "ui/Palettes.h"
#include "ui/ReadableIndicatorStyle.h"
#include "ui/Screenshot.h"
#include "ui/Translations.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <QTextStream>
#include <QTimer>
#include <QWindow>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tillery;

namespace {

bool hasDisplay()
{
    const QByteArray platform = qgetenv("QT_QPA_PLATFORM");
    if (!platform.isEmpty())
        return platform != "offscreen" && platform != "minimal";
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Prints one line once the window system shows the window (it has been
// mapped and exposed), and another once the model has loaded what it shows
// and nothing runs any more, for scripts that wait for the application.
void reportWhenExposed(QWidget &window, const ApplicationScene &scene, QTextStream &out)
{
    auto *poll = new QTimer(&window);
    QObject::connect(poll, &QTimer::timeout, &window, [&window, &scene, &out, poll, exposed = false]() mutable {
        if (!exposed && window.windowHandle() && window.windowHandle()->isExposed()) {
            exposed = true;
            out << "Tillery: the main window is on screen\n";
            out.flush();
        }
        if (!exposed || !scene.isIdle())
            return;
        poll->stop();
        out << "Tillery: the window is idle\n";
        out.flush();
    });
    poll->start(5);
}

} // namespace

int main(int argc, char *argv[])
{
    const bool headless = !hasDisplay();
    if (headless)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Tillery"_s);
    QApplication::setApplicationVersion(QStringLiteral(TILLERY_VERSION));
    QApplication::setWindowIcon(QIcon(u":/icons/icons/network.svg"_s));
    QGuiApplication::setDesktopFileName(u"org.tillery.Tillery"_s);
    quitOnTerminationSignals();
    installTranslations();

    QCommandLineParser parser;
    parser.setApplicationDescription(
        QCoreApplication::translate("main", "A desktop client for Mercurial and Git repositories."));
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption screenshotOption(
        u"screenshot"_s, QCoreApplication::translate("main", "Render the main window to a PNG file and quit."),
        u"file"_s);
    const QCommandLineOption repositoryOption(
        u"repository"_s, QCoreApplication::translate("main", "Select (and add) this repository."), u"folder"_s);
    const QCommandLineOption tabOption(
        u"tab"_s, QCoreApplication::translate("main", "Show this page: changes or history."), u"tab"_s, u"changes"_s);
    const QCommandLineOption fileOption(
        u"file"_s, QCoreApplication::translate("main", "Select this changed file (a repository-relative path)."),
        u"path"_s);
    const QCommandLineOption demoOption(
        u"demo"_s, QCoreApplication::translate("main", "Open two sample repositories made in a temporary folder, with "
                                                       "settings of their own; your own list of repositories is left "
                                                       "alone."));
    const QCommandLineOption reportOption(
        u"report-window"_s,
        QCoreApplication::translate("main", "Print a line on standard output once the window is on screen."));
    const QCommandLineOption darkOption(u"dark"_s, QCoreApplication::translate("main", "Use a dark palette."));
    const QCommandLineOption tourOption(
        u"screenshot-tour"_s,
        QCoreApplication::translate("main", "With --demo: write pictures of every page, sheet and settings "
                                            "tab, light and dark, into the folder and quit."),
        u"folder"_s);
    parser.addOptions(
        {screenshotOption, repositoryOption, tabOption, fileOption, demoOption, reportOption, darkOption, tourOption});
    parser.addPositionalArgument(
        u"folders"_s,
        QCoreApplication::translate("main", "Repositories to add (if they are new); the last is selected."),
        QCoreApplication::translate("main", "[folder…]"));
    parser.process(application);
    QTextStream out(stdout);
    if (parser.isSet(darkOption)) {
        QApplication::setStyle(u"Fusion"_s);
        QApplication::setPalette(darkPalette());
    }
    QApplication::setStyle(new ReadableIndicatorStyle(QApplication::style()->name()));

    // The person's own settings, or for a demonstration a set of its own.
    // The folders to open, the one --repository names last; a start that
    // does not only take pictures hands them to a window already running.
    QStringList folders;
    QStringList named = parser.positionalArguments();
    if (parser.isSet(repositoryOption))
        named.append(parser.value(repositoryOption));
    for (const QString &name : std::as_const(named)) {
        const QString folder = QDir::current().absoluteFilePath(name);
        // A file is refused by the window, as a folder that holds no repository is.
        if (!QFileInfo::exists(folder)) {
            QTextStream(stderr)
                << QCoreApplication::translate("main", "Tillery could not open %1: there is no such folder.").arg(name)
                << '\n';
            return 1;
        }
        folders.append(QDir::cleanPath(folder));
    }
    const bool takesPictures =
        parser.isSet(screenshotOption) || parser.isSet(tourOption) || parser.isSet(demoOption) || headless;
    std::unique_ptr<SingleInstance> instance;
    if (!takesPictures) {
        instance = std::make_unique<SingleInstance>(ApplicationScene::personalSettingsFile());
        if (instance->handOver(folders)) {
            if (parser.isSet(reportOption))
                out << "Tillery: the running window took the folders\n";
            return 0;
        }
    }

    std::unique_ptr<ApplicationScene> scene;
    try {
        scene = std::make_unique<ApplicationScene>(parser.isSet(demoOption));
    } catch (const std::exception &failure) {
        QTextStream(stderr) << "The sample repositories could not be made: " << failure.what() << "\n";
        return 1;
    }
    MainWindow &window = scene->window();
    const QList<Repository> &demoRepositories = scene->demoRepositories();
    scene->start();
    if (!folders.isEmpty())
        scene->openRepositories(folders);

    if (parser.isSet(tourOption)) {
        if (demoRepositories.isEmpty()) {
            QTextStream(stderr) << "--screenshot-tour needs --demo.\n";
            return 2;
        }
        const QStringList pictures = scene->takeTour(QDir::current().absoluteFilePath(parser.value(tourOption)));
        for (const QString &path : pictures)
            out << "Wrote " << path << "\n";
        return pictures.isEmpty() ? 1 : 0;
    }

    QString screenshot = parser.value(screenshotOption);
    if (screenshot.isEmpty() && headless)
        screenshot = QDir::current().absoluteFilePath(u"tillery-screenshot.png"_s);
    if (screenshot.isEmpty()) {
        if (instance) {
            QObject::connect(instance.get(), &SingleInstance::foldersHandedOver, &window,
                             [&scene, &out, report = parser.isSet(reportOption)](const QStringList &handed) {
                                 if (report) {
                                     out << "Tillery: another start handed over " << handed.size() << " folder(s)\n";
                                     out.flush();
                                 }
                                 scene->raiseWindow();
                                 if (!handed.isEmpty())
                                     scene->openRepositories(handed);
                             });
            if (!instance->listen())
                QTextStream(stderr) << "Tillery could not listen for later starts on " << instance->serverName()
                                    << ".\n";
        }
        if (parser.isSet(reportOption))
            scene->reportChanges([&out](const QString &line) {
                out << "Tillery: " << line << "\n";
                out.flush();
            });
        window.show();
        if (parser.isSet(reportOption))
            reportWhenExposed(window, *scene, out);
        return QApplication::exec();
    }

    // Pictures instead of a window: one of the page asked for, or for a
    // demonstration the Changes page of each sample repository.
    window.show();
    QStringList written;
    const auto take = [&](const QString &path) {
        scene->waitUntilIdle();
        if (saveScreenshot(window, path))
            written.append(path);
    };
    if (!demoRepositories.isEmpty() && parser.value(screenshotOption).isEmpty()) {
        for (const Repository &repository : std::as_const(demoRepositories)) {
            scene->select(repository);
            const QString file = parser.isSet(fileOption) ? parser.value(fileOption) : u"src/main.c"_s;
            scene->showPage(parser.value(tabOption), file);
            take(QDir::current().absoluteFilePath(u"tillery-demo-"_s + rawValue(repository.kind) + u".png"_s));
        }
    } else {
        scene->waitUntilIdle();
        // A picture of the start page is no picture of the repository asked for.
        if (const std::optional<QString> error = scene->presentedError(); error && !folders.isEmpty()) {
            QTextStream(stderr)
                << QCoreApplication::translate("main", "Tillery could not open %1: %2").arg(named.join(u", "_s), *error)
                << '\n';
            return 1;
        }
        scene->showPage(parser.value(tabOption), parser.value(fileOption));
        take(QDir::current().absoluteFilePath(screenshot));
    }
    if (written.isEmpty()) {
        QTextStream(stderr) << QCoreApplication::translate("main", "Tillery could not write a screenshot.") << '\n';
        return 1;
    }
    if (headless)
        out << "No display is available, so Tillery ran offscreen.\n";
    for (const QString &path : std::as_const(written))
        out << "Wrote a screenshot of the main window to " << path << ".\n";
    return 0;
}
