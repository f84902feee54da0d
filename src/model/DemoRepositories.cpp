#include "model/DemoRepositories.h"

#include "process/ToolRunner.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

void write(const QString &root, const QString &relative, const QByteArray &contents)
{
    const QString path = root + u'/' + relative;
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(contents);
}

QByteArray picture(const QColor &color)
{
    QImage image(96, 64, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(color);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(QRectF(4, 4, 88, 56), 12, 12);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(30, 32), 12, 12);
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

const QByteArray readme = "# Harbour tools\n\nSmall utilities for the harbour office.\n";
const QByteArray mainC = "#include <stdio.h>\n\nint main(void)\n{\n    puts(\"tide table\");\n    return 0;\n}\n";
const QByteArray changedMainC =
    "#include <stdio.h>\n\nstatic int high_tide(int hour)\n{\n    return hour % 12 == 6;\n}\n\nint main(void)\n{\n"
    "    puts(\"tide table for the day\");\n    for (int hour = 0; hour < 24; ++hour)\n        printf(\"%2d %s\\n\", hour, "
    "high_tide(hour) ? \"high\" : \"\");\n    return 0;\n}\n";

Repository makeMercurial(const QString &path)
{
    QDir().mkpath(path);
    const QStringList user{u"--config"_s, u"ui.username=Ann Harbour <ann@example.com>"_s};
    const auto hg = [&](const QStringList &arguments) { runMercurial(user + arguments, path, {0}); };
    hg({u"init"_s});
    write(path, u"README.md"_s, readme);
    write(path, u"src/main.c"_s, mainC);
    hg({u"commit"_s, u"--addremove"_s, u"-m"_s, u"Start the harbour tools"_s, u"-d"_s, u"1700000000 0"_s});
    hg({u"bookmark"_s, u"main"_s});
    write(path, u"docs/usage.txt"_s, "Run tide to print the table.\n");
    hg({u"commit"_s, u"--addremove"_s, u"-m"_s, u"Describe how to use it\n\nA first page of documentation."_s, u"-d"_s,
        u"1700086400 0"_s});
    hg({u"bookmark"_s, u"--inactive"_s});
    hg({u"bookmark"_s, u"feature"_s});
    write(path, u"src/moon.c"_s, "int moon_phase(void) { return 0; }\n");
    hg({u"commit"_s, u"--addremove"_s, u"-m"_s, u"Add a moon phase stub"_s, u"-d"_s, u"1700172800 0"_s});
    hg({u"update"_s, u"main"_s});
    write(path, u"docs/usage.txt"_s, "Run tide to print the table.\nHeights are in metres.\n");
    write(path, u"README.md"_s, QByteArray(readme) + "\nHeights are given in metres.\n");
    hg({u"commit"_s, u"-m"_s, u"Give the heights in metres"_s, u"-d"_s, u"1700259200 0"_s});
    hg({u"merge"_s, u"--tool=:merge"_s, u"feature"_s});
    hg({u"commit"_s, u"-m"_s, u"Merge the moon phase stub"_s, u"-d"_s, u"1700345600 0"_s});
    write(path, u"src/tide.c"_s, "int high_tide(int hour) { return hour % 12 == 6; }\n");
    hg({u"commit"_s, u"--addremove"_s, u"-m"_s, u"Find the high tides"_s, u"-d"_s, u"1700432000 0"_s});
    // Changes set aside for later.
    write(path, u"src/tide.c"_s,
          "int high_tide(int hour) { return hour % 12 == 6; }\n"
          "int tide_height_feet(int metres) { return metres * 33 / 10; }\n");
    write(path, u"docs/usage.txt"_s, "Run tide to print the table.\nHeights are in metres, or in feet with -f.\n");
    hg({u"--config"_s, u"extensions.shelve="_s, u"shelve"_s, u"--name"_s, u"heights-in-feet"_s, u"--quiet"_s});
    write(path, u"src/main.c"_s, changedMainC);
    write(path, u"NOTES.txt"_s, "Ask the harbour master about Sunday tides.\n");
    write(path, u"images/buoy.png"_s, picture(QColor(230, 90, 60)));
    hg({u"add"_s, u"--"_s, u"NOTES.txt"_s});
    return Repository{path, RepositoryKind::mercurial};
}

Repository makeGit(const QString &path)
{
    QDir().mkpath(path);
    const QStringList identity{u"-c"_s, u"user.name=Ben Quay"_s,      u"-c"_s, u"user.email=ben@example.com"_s,
                               u"-c"_s, u"init.defaultBranch=main"_s, u"-c"_s, u"commit.gpgsign=false"_s};
    const auto git = [&](const QStringList &arguments) { runGit(identity + arguments, path, {0}); };
    git({u"init"_s, u"--quiet"_s});
    write(path, u"README.md"_s, readme);
    write(path, u"src/main.c"_s, mainC);
    git({u"add"_s, u"-A"_s});
    git({u"commit"_s, u"--quiet"_s, u"-m"_s, u"Start the harbour tools"_s});
    git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"feature/lights"_s});
    write(path, u"src/lights.c"_s, "int light_on(int hour) { return hour < 6 || hour > 20; }\n");
    git({u"add"_s, u"-A"_s});
    git({u"commit"_s, u"--quiet"_s, u"-m"_s, u"Switch the harbour lights at night"_s});
    git({u"checkout"_s, u"--quiet"_s, u"main"_s});
    write(path, u"docs/usage.txt"_s, "Run tide to print the table.\n");
    git({u"add"_s, u"-A"_s});
    git({u"commit"_s, u"--quiet"_s, u"-m"_s, u"Describe how to use it"_s});
    git({u"tag"_s, u"v0.1"_s});
    // Changes set aside for later.
    write(path, u"docs/usage.txt"_s, "Run tide to print the table.\nThe lights come on at dusk.\n");
    write(path, u"src/dusk.c"_s, "int dusk_hour(int month) { return month < 4 || month > 9 ? 17 : 20; }\n");
    git({u"stash"_s, u"push"_s, u"--quiet"_s, u"--include-untracked"_s, u"--message=Light the harbour at dusk"_s});
    write(path, u"src/main.c"_s, changedMainC);
    write(path, u"images/lighthouse.png"_s, picture(QColor(60, 120, 220)));
    write(path, u"TODO.txt"_s, "Count the buoys.\n");
    git({u"add"_s, u"--"_s, u"TODO.txt"_s});
    QFile::remove(path + u"/docs/usage.txt"_s);
    return Repository{path, RepositoryKind::git};
}

} // namespace

QList<Repository> makeDemoRepositories(const QString &folder)
{
    return {makeMercurial(folder + u"/harbour-tools (Mercurial)"_s), makeGit(folder + u"/harbour-tools (Git)"_s)};
}

Repository makeMergingDemoRepository(const QString &folder)
{
    const QString path = folder + u"/harbour-tools (merging)"_s;
    QDir().mkpath(path);
    const QStringList identity{u"-c"_s, u"user.name=Ben Quay"_s,      u"-c"_s, u"user.email=ben@example.com"_s,
                               u"-c"_s, u"init.defaultBranch=main"_s, u"-c"_s, u"commit.gpgsign=false"_s};
    const auto git = [&](const QStringList &arguments, const QSet<int> &accepted = {0}) {
        runGit(identity + arguments, path, accepted);
    };
    git({u"init"_s, u"--quiet"_s});
    write(path, u"README.md"_s, readme);
    write(path, u"src/main.c"_s, mainC);
    git({u"add"_s, u"-A"_s});
    git({u"commit"_s, u"--quiet"_s, u"-m"_s, u"Start the harbour tools"_s});
    git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"feature/daily"_s});
    write(path, u"src/main.c"_s, QByteArray(mainC).replace("tide table", "tide table for the day"));
    write(path, u"docs/usage.txt"_s, "Run tide to print the day's table.\n");
    git({u"add"_s, u"-A"_s});
    git({u"commit"_s, u"--quiet"_s, u"-m"_s, u"Print the day's table"_s});
    git({u"checkout"_s, u"--quiet"_s, u"main"_s});
    write(path, u"src/main.c"_s, QByteArray(mainC).replace("tide table", "tide table in metres"));
    write(path, u"README.md"_s, QByteArray(readme) + "\nHeights are given in metres.\n");
    git({u"commit"_s, u"--quiet"_s, u"-am"_s, u"Give the heights in metres"_s});
    // Both changed the same line: the merge stops with it unresolved.
    git({u"merge"_s, u"--quiet"_s, u"--no-edit"_s, u"feature/daily"_s}, {0, 1});
    return Repository{path, RepositoryKind::git};
}

} // namespace tillery
