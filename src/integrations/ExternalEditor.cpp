#include "integrations/ExternalEditor.h"

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct EditorEntry {
    ExternalEditor editor;
    QString raw;
    QString name;
    QStringList identifiers;
};

const QList<EditorEntry> &catalogue()
{
    static const QList<EditorEntry> entries{
        {ExternalEditor::sublimeText, u"sublimeText"_s, u"Sublime Text"_s,
         {u"com.sublimetext.4"_s, u"com.sublimetext.3"_s, u"com.sublimetext.2"_s}},
        {ExternalEditor::textMate, u"textMate"_s, u"TextMate"_s, {u"com.macromates.TextMate"_s}},
        {ExternalEditor::vsCode, u"vsCode"_s, u"VS Code"_s, {u"com.microsoft.VSCode"_s}},
        {ExternalEditor::xcode, u"xcode"_s, u"Xcode"_s, {u"com.apple.dt.Xcode"_s}},
        {ExternalEditor::other, u"other"_s, u"Editor"_s, {}},
    };
    return entries;
}

const EditorEntry &entryOf(ExternalEditor editor)
{
    return catalogue()[static_cast<int>(editor)];
}

} // namespace

QList<ExternalEditor> allExternalEditors()
{
    QList<ExternalEditor> editors;
    for (const EditorEntry &entry : catalogue())
        editors.append(entry.editor);
    return editors;
}

QString rawValue(ExternalEditor editor)
{
    return entryOf(editor).raw;
}

std::optional<ExternalEditor> externalEditorFromRawValue(const QString &raw)
{
    for (const EditorEntry &entry : catalogue()) {
        if (entry.raw == raw)
            return entry.editor;
    }
    return std::nullopt;
}

QString displayName(ExternalEditor editor)
{
    return entryOf(editor).name;
}

QStringList bundleIdentifiers(ExternalEditor editor)
{
    return entryOf(editor).identifiers;
}

std::optional<ExternalEditor> externalEditorWithBundleIdentifier(const QString &identifier)
{
    for (const EditorEntry &entry : catalogue()) {
        if (entry.identifiers.contains(identifier))
            return entry.editor;
    }
    return std::nullopt;
}

} // namespace tillery
