#include "model/Background.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

BackgroundPool::BackgroundPool(int threadCount)
    : m_threads(new QThreadPool)
{
    m_threads->setMaxThreadCount(threadCount);
}

BackgroundPool::~BackgroundPool()
{
    // Work that would not end in time is left to the end of the process
    // rather than making quitting wait for it.
    const bool ended = isStopping() ? m_threads->waitForDone(0) : stop(2000);
    if (ended)
        delete m_threads;
}

bool BackgroundPool::stop(int milliseconds)
{
    m_stopping->store(true);
    return m_threads->waitForDone(milliseconds);
}

} // namespace tillery

namespace tillery::background {

QString describe(const std::exception_ptr &error)
{
    try {
        std::rethrow_exception(error);
    } catch (const Failure &failure) {
        return failure.description();
    } catch (const std::exception &other) {
        return QString::fromUtf8(other.what());
    } catch (...) {
        return QCoreApplication::translate("tillery::Background", "An unknown error occurred.");
    }
}

} // namespace tillery::background
