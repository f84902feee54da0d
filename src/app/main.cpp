#include "ui/MainWindow.h"
#include "ui/Screenshot.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

bool hasDisplay()
{
    return qEnvironmentVariableIsSet("QT_QPA_PLATFORM") || !qEnvironmentVariableIsEmpty("DISPLAY")
           || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

} // namespace

int main(int argc, char *argv[])
{
    // Without a display the window is rendered offscreen and saved as a picture.
    const bool headless = !hasDisplay();
    if (headless)
        qputenv("QT_QPA_PLATFORM", "offscreen");

    QApplication application(argc, argv);
    QApplication::setApplicationName(u"Tillery"_s);
    QApplication::setOrganizationName(u"Tillery"_s);
    QApplication::setApplicationVersion(QStringLiteral(TILLERY_VERSION));

    QCommandLineParser parser;
    parser.setApplicationDescription(u"A desktop client for Mercurial and Git repositories."_s);
    parser.addHelpOption();
    parser.addVersionOption();
    const QCommandLineOption screenshotOption(
        u"screenshot"_s, u"Render the main window to a PNG file and quit."_s, u"file"_s);
    parser.addOption(screenshotOption);
    parser.process(application);

    QString screenshotPath = parser.value(screenshotOption);
    if (screenshotPath.isEmpty() && headless)
        screenshotPath = QDir::current().absoluteFilePath(u"tillery-screenshot.png"_s);

    tillery::MainWindow window;
    if (screenshotPath.isEmpty()) {
        window.show();
        return QApplication::exec();
    }

    QTextStream out(stdout);
    QTextStream err(stderr);
    const QString absolutePath = QDir::current().absoluteFilePath(screenshotPath);
    if (!tillery::saveScreenshot(window, absolutePath)) {
        err << "Tillery could not write a screenshot to " << absolutePath << ".\n";
        return 1;
    }
    if (headless)
        out << "No display is available, so Tillery ran offscreen.\n";
    out << "Wrote a screenshot of the main window to " << absolutePath << ".\n";
    return 0;
}
