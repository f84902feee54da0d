#pragma once

#include "process/Cancellation.h"
#include "process/PipedChild.h"
#include "records/CommandOutput.h"

#include <QByteArray>

#include <functional>
#include <memory>

namespace tillery {

// A tool run whose output is read a piece at a time, at the reader's pace:
// the tool waits on a full pipe while nobody reads. Any thread may read it,
// one at a time. Letting it go stops the tool if it still runs.
class ToolStream {
public:
    // Judges how the run ended: throws when the status is not accepted.
    using Judge = std::function<void(const CommandOutput &)>;

    ToolStream(const PipedChild &child, Judge judge);
    ~ToolStream();
    ToolStream(const ToolStream &) = delete;
    ToolStream &operator=(const ToolStream &) = delete;

    // Appends what the tool printed next (waiting for it) to `output`; false
    // once everything has been read and the run judged. Cancelling stops the
    // tool and throws CancellationFailure.
    bool readMore(QByteArray &output, const CancellationCheck &isCancelled = {});

private:
    void stop();

    PipedChild m_child;
    Judge m_judge;
    QByteArray m_error;
    bool m_finished = false;
};

} // namespace tillery
