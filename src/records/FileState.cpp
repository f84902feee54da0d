#include "records/FileState.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct FileStateText {
    FileState state;
    char16_t letter;
    const char16_t *label;
};

constexpr FileStateText fileStateTexts[] = {
    {FileState::modified, u'M', u"Modified"},   {FileState::added, u'A', u"Added"},
    {FileState::removed, u'R', u"Removed"},     {FileState::missing, u'!', u"Missing"},
    {FileState::untracked, u'?', u"Untracked"}, {FileState::ignored, u'I', u"Ignored"},
    {FileState::clean, u'C', u"Clean"},         {FileState::unresolved, u'U', u"Unresolved"},
};

const FileStateText &textOf(FileState state)
{
    return fileStateTexts[static_cast<int>(state)];
}

} // namespace

QList<FileState> allFileStates()
{
    QList<FileState> states;
    for (const FileStateText &text : fileStateTexts)
        states.append(text.state);
    return states;
}

QString fileStateLetter(FileState state)
{
    return QString(QChar(textOf(state).letter));
}

QString fileStateLabel(FileState state)
{
    return QString::fromUtf16(textOf(state).label);
}

std::optional<FileState> fileStateFromLetter(QStringView letter)
{
    if (letter.size() != 1)
        return std::nullopt;
    for (const FileStateText &text : fileStateTexts) {
        if (letter.front() == QChar(text.letter))
            return text.state;
    }
    return std::nullopt;
}

} // namespace tillery
