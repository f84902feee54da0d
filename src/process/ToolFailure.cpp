#include "process/ToolFailure.h"

#include "process/Progress.h"
#include "process/RemoteAddress.h"
#include "records/TextDecoding.h"

using namespace Qt::StringLiterals;

namespace tillery {

ToolFailure::ToolFailure(const Wording &wording, Payload payload)
    : Failure(describe(wording, payload))
    , m_payload(std::move(payload))
{
}

QString ToolFailure::describe(const Wording &wording, const Payload &payload)
{
    switch (payload.failureCase) {
    case Case::command: {
        // An address in the arguments or the tool's words may carry a password.
        QString text = wording.commandName + u' ' + withPasswordsMasked(payload.arguments.join(u' '))
                       + u" exited with status "_s + QString::number(payload.code) + u'.';
        const QString output = payload.output.trimmed();
        if (!output.isEmpty())
            text += u"\n\n"_s + withPasswordsMasked(output);
        return text;
    }
    case Case::invalidRepository:
        return payload.text + u" is not a "_s + wording.toolName + u" repository."_s;
    case Case::malformedOutput:
        return wording.toolName + u" returned data that could not be read: "_s + payload.text;
    case Case::notInstalled:
        return wording.notInstalled;
    }
    Q_UNREACHABLE();
    return QString();
}

QString ToolFailure::combinedOutput(const QByteArray &standardError, const QByteArray &standardOutput)
{
    QStringList texts;
    for (const QByteArray *stream : {&standardError, &standardOutput}) {
        QString text = asTerminalShowsIt(decodeUtf8OrEmpty(*stream));
        if (!text.isEmpty())
            texts.append(std::move(text));
    }
    return texts.join(u'\n');
}

const ToolFailure::Wording &MercurialFailure::wording()
{
    static const Wording wording{
        u"hg"_s, u"Mercurial"_s,
        u"Mercurial (hg) was not found. Install Mercurial and ensure hg is available on PATH."_s};
    return wording;
}

const ToolFailure::Wording &GitFailure::wording()
{
    static const Wording wording{
        u"git"_s, u"Git"_s,
        u"Git was not found. Install Git and ensure git is available on PATH."_s};
    return wording;
}

} // namespace tillery
