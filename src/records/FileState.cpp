#include "records/FileState.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct FileStateText {
    FileState state;
    char16_t letter;
    // Marked for translation in the "tillery::FileState" context.
    const char *label;
};

constexpr FileStateText fileStateTexts[] = {
    {FileState::modified, u'M', QT_TRANSLATE_NOOP("tillery::FileState", "Modified")},
    {FileState::added, u'A', QT_TRANSLATE_NOOP("tillery::FileState", "Added")},
    {FileState::removed, u'R', QT_TRANSLATE_NOOP("tillery::FileState", "Removed")},
    {FileState::missing, u'!', QT_TRANSLATE_NOOP("tillery::FileState", "Missing")},
    {FileState::untracked, u'?', QT_TRANSLATE_NOOP("tillery::FileState", "Untracked")},
    {FileState::ignored, u'I', QT_TRANSLATE_NOOP("tillery::FileState", "Ignored")},
    {FileState::clean, u'C', QT_TRANSLATE_NOOP("tillery::FileState", "Clean")},
    {FileState::unresolved, u'U', QT_TRANSLATE_NOOP("tillery::FileState", "Unresolved")},
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
    return QCoreApplication::translate("tillery::FileState", textOf(state).label);
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
