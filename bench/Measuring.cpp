#include "Measuring.h"

#include "process/ChildProcess.h"
#include "process/Executables.h"

#include <QFile>
#include <QProcess>

#include <algorithm>
#include <malloc.h>
#include <sys/resource.h>

using namespace Qt::StringLiterals;

namespace tillery::bench {

namespace {

double statusFieldMiB(const QByteArray &field)
{
    QFile status(QStringLiteral("/proc/self/status"));
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray &line : status.readAll().split('\n')) {
        if (line.startsWith(field + ':'))
            return line.mid(field.size() + 1).trimmed().split(' ').first().toDouble() / 1024.0;
    }
    return 0;
}

} // namespace

double median(QList<double> values)
{
    if (values.isEmpty())
        return 0;
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double milliseconds(qint64 nanoseconds)
{
    return static_cast<double>(nanoseconds) / 1e6;
}

size_t heapInUse()
{
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
}

double peakResidentMiB()
{
    return statusFieldMiB("VmHWM");
}

double residentMiB()
{
    return statusFieldMiB("VmRSS");
}

double largestChildMiB()
{
    struct rusage children { };
    getrusage(RUSAGE_CHILDREN, &children);
    return static_cast<double>(children.ru_maxrss) / 1024.0;
}

QString loadAverage()
{
    QFile file(u"/proc/loadavg"_s);
    if (!file.open(QIODevice::ReadOnly))
        return QString();
    return QString::fromLatin1(file.readAll()).section(u' ', 0, 2);
}

StallProbe::StallProbe()
{
    m_ticker.setInterval(1);
    m_ticker.setTimerType(Qt::PreciseTimer);
    QObject::connect(&m_ticker, &QTimer::timeout, [this] {
        m_gaps.append(milliseconds(m_clock.nsecsElapsed()));
        m_clock.restart();
    });
    m_clock.start();
    m_ticker.start();
}

double StallProbe::longest() const
{
    return m_gaps.isEmpty() ? 0 : *std::max_element(m_gaps.cbegin(), m_gaps.cend());
}

double StallProbe::percentile(double fraction) const
{
    QList<double> sorted = m_gaps;
    std::sort(sorted.begin(), sorted.end());
    return sorted.isEmpty() ? 0 : sorted[static_cast<qsizetype>(static_cast<double>(sorted.size() - 1) * fraction)];
}

DirectTool directTool(RepositoryKind kind)
{
    if (kind == RepositoryKind::git)
        return {findGitExecutable().value_or(u"git"_s), gitLeadingArguments(), gitEnvironment()};
    return {findMercurialExecutable().value_or(u"hg"_s), mercurialLeadingArguments(), mercurialEnvironment()};
}

double runDirectly(const DirectTool &tool, const QStringList &arguments, const QString &directory,
                   const std::function<bool(const QByteArray &)> &enough)
{
    QElapsedTimer timer;
    timer.start();
    QProcess process;
    process.setWorkingDirectory(directory);
    process.setProcessEnvironment(tool.environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.setStandardErrorFile(QProcess::nullDevice());
    runAtBackgroundPriority(process);
    process.start(tool.executable, tool.leadingArguments + arguments);
    QByteArray output;
    bool satisfied = false;
    while (!satisfied && process.waitForReadyRead(-1)) {
        output += process.readAllStandardOutput();
        satisfied = enough && enough(output);
        if (!enough)
            output.clear();
    }
    if (!satisfied)
        process.waitForFinished(-1);
    const double elapsed = milliseconds(timer.nsecsElapsed());
    if (satisfied)
        stopChild(process);
    return elapsed;
}

QString commandLine(const QStringList &arguments)
{
    QStringList shown;
    for (QString argument : arguments) {
        argument.replace(u'\t', u"\\t"_s).replace(u'\n', u"\\n"_s).replace(QChar(0x1e), u"%x1e"_s);
        if (argument.contains(u'\''))
            shown.append(u'"' + argument + u'"');
        else
            shown.append(argument.contains(u' ') || argument.isEmpty() ? u'\'' + argument + u'\'' : argument);
    }
    return shown.join(u' ');
}

} // namespace tillery::bench
