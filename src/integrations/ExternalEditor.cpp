#include "integrations/ExternalEditor.h"

#include <QCoreApplication>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

struct EditorEntry {
    ExternalEditor editor;
    QString raw;
    QString name;
    QStringList bundleIdentifiers;
    QStringList executables;
    QStringList desktopFiles;
};

const QList<EditorEntry> &catalogue()
{
    static const QList<EditorEntry> entries{
        {ExternalEditor::sublimeText,
         u"sublimeText"_s,
         u"Sublime Text"_s,
         {u"com.sublimetext.4"_s, u"com.sublimetext.3"_s, u"com.sublimetext.2"_s},
         {u"subl"_s},
         {u"sublime_text"_s}},
        {ExternalEditor::textMate, u"textMate"_s, u"TextMate"_s, {u"com.macromates.TextMate"_s}, {}, {}},
        {ExternalEditor::vsCode, u"vsCode"_s, u"VS Code"_s, {u"com.microsoft.VSCode"_s}, {u"code"_s}, {u"code"_s}},
        {ExternalEditor::xcode, u"xcode"_s, u"Xcode"_s, {u"com.apple.dt.Xcode"_s}, {}, {}},
        {ExternalEditor::kate, u"kate"_s, u"Kate"_s, {}, {u"kate"_s}, {u"org.kde.kate"_s}},
        {ExternalEditor::gnomeTextEditor,
         u"gnomeTextEditor"_s,
         u"GNOME Text Editor"_s,
         {},
         {u"gnome-text-editor"_s},
         {u"org.gnome.TextEditor"_s}},
        {ExternalEditor::gedit, u"gedit"_s, u"gedit"_s, {}, {u"gedit"_s}, {u"org.gnome.gedit"_s}},
        {ExternalEditor::zed, u"zed"_s, u"Zed"_s, {}, {u"zed"_s, u"zeditor"_s}, {u"dev.zed.Zed"_s}},
        {ExternalEditor::other, u"other"_s, u"Editor"_s, {}, {}, {}},
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

QList<ExternalEditor> platformExternalEditors()
{
#ifdef Q_OS_MACOS
    return {ExternalEditor::sublimeText, ExternalEditor::textMate, ExternalEditor::vsCode, ExternalEditor::xcode,
            ExternalEditor::other};
#else
    return {ExternalEditor::vsCode, ExternalEditor::sublimeText, ExternalEditor::kate, ExternalEditor::gnomeTextEditor,
            ExternalEditor::gedit,  ExternalEditor::zed,         ExternalEditor::other};
#endif
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
    // Only "another editor" is a word; the rest are the programs' own names.
    if (editor == ExternalEditor::other)
        return QCoreApplication::translate("tillery::ExternalEditor", "Editor");
    return entryOf(editor).name;
}

QStringList bundleIdentifiers(ExternalEditor editor)
{
    return entryOf(editor).bundleIdentifiers;
}

std::optional<ExternalEditor> externalEditorWithBundleIdentifier(const QString &identifier)
{
    for (const EditorEntry &entry : catalogue()) {
        if (entry.bundleIdentifiers.contains(identifier))
            return entry.editor;
    }
    return std::nullopt;
}

QStringList executableNames(ExternalEditor editor)
{
    return entryOf(editor).executables;
}

QStringList desktopFileIds(ExternalEditor editor)
{
    return entryOf(editor).desktopFiles;
}

} // namespace tillery
