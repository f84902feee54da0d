#include "process/Cancellation.h"

namespace tillery {

namespace {
thread_local RunCancellationScope *innermostScope = nullptr;
} // namespace

RunCancellationScope::RunCancellationScope(CancellationCheck check)
    : m_check(std::move(check))
    , m_outer(innermostScope)
{
    innermostScope = this;
}

RunCancellationScope::~RunCancellationScope()
{
    innermostScope = m_outer;
}

bool RunCancellationScope::isActive()
{
    return innermostScope != nullptr;
}

bool RunCancellationScope::isCancelled()
{
    return anySaysStop(innermostScope);
}

CancellationCheck RunCancellationScope::current()
{
    return [innermost = innermostScope] { return anySaysStop(innermost); };
}

bool RunCancellationScope::anySaysStop(const RunCancellationScope *innermost)
{
    for (const RunCancellationScope *scope = innermost; scope; scope = scope->m_outer) {
        if (scope->m_check && scope->m_check())
            return true;
    }
    return false;
}

} // namespace tillery
