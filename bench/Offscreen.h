#pragma once

#include <QtGlobal>

namespace tillery::bench {

// Widgets benchmarks draw offscreen unless told which platform to use.
inline void drawOffscreenUnlessTold()
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

} // namespace tillery::bench
