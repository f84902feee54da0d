#pragma once

#include "integrations/EditorLaunch.h"

#include "records/Repository.h"
#include "records/WhitespaceChanges.h"
#include "records/SidebarLayout.h"

#include <QList>
#include <QMap>
#include <QSettings>
#include <QString>

#include <optional>

namespace tillery {

// Every persisted setting, by its versioned key. A value that is absent or
// of the wrong type reads as its default; nothing here ever reports a failure.
namespace settingsKeys {
inline const QString repositories = QStringLiteral("repositories.v1");
inline const QString sidebarLayout = QStringLiteral("repositorySidebarLayout.v1");
inline const QString lastSelectedRepository = QStringLiteral("lastSelectedRepository.v1");
inline const QString selectedFilesByRepository = QStringLiteral("selectedFilesByRepository.v1");
inline const QString repositoryIconFiles = QStringLiteral("repositoryIconFiles.v1");
inline const QString commitUsername = QStringLiteral("commitUsername.v1");
inline const QString buttonAppearance = QStringLiteral("buttonAppearance.v1");
inline const QString diffLayout = QStringLiteral("diffLayout.v1");
// "Ignored" or "Shown": whether diffs leave out changes in the amount of white space.
inline const QString diffWhitespace = QStringLiteral("diffWhitespace.v1");
inline const QString defaultTerminal = QStringLiteral("defaultTerminal.v1");
inline const QString editorSelection = QStringLiteral("externalEditor.selection.v2");
inline const QString editorPath = QStringLiteral("externalEditor.path.v2");
inline const QString editorArguments = QStringLiteral("externalEditor.arguments.v2");
inline const QString legacyEditor = QStringLiteral("externalEditor.v1");
} // namespace settingsKeys

namespace settingsDefaults {
inline const QString buttonAppearance = QStringLiteral("macOS Default");
inline const QString diffLayout = QStringLiteral("Unified");
inline const QString defaultTerminal = QStringLiteral("com.apple.Terminal");
inline const QString editorArguments = QStringLiteral("%TARGET_PATH%");
} // namespace settingsDefaults

class ModelSettings {
public:
    explicit ModelSettings(QSettings &settings);

    // The whole stored list, or nothing at all when any of it does not decode.
    QList<Repository> repositories() const;
    void setRepositories(const QList<Repository> &repositories);

    std::optional<RepositorySidebarLayout> sidebarLayout() const;
    void setSidebarLayout(const RepositorySidebarLayout &layout);

    std::optional<QString> lastSelectedRepository() const;
    void setLastSelectedRepository(const std::optional<QString> &path);

    QMap<QString, QString> selectedFilesByRepository() const;
    void rememberSelectedFile(const QString &repositoryPath, const QString &filePath);

    QMap<QString, QString> repositoryIconFiles() const;
    void setRepositoryIconFiles(const QMap<QString, QString> &files);

    QString commitUsername() const;
    void setCommitUsername(const QString &name);

    QString buttonAppearance() const;
    QString diffLayout() const;
    WhitespaceChanges diffWhitespace() const;
    void setDiffWhitespace(WhitespaceChanges whitespace);
    QString defaultTerminal() const;
    // The stored terminal choice, when one is stored.
    std::optional<QString> defaultTerminalIdentifier() const;
    std::optional<QString> editorSelection() const;
    QString editorPath() const;
    QString editorArguments() const;
    // The three editor keys together.
    EditorChoice editorChoice() const;
    // Writes the selection (or removes it when absent), the path and the arguments.
    void setEditorChoice(const EditorChoice &choice);
    void setDefaultTerminal(const QString &identifier);

    // Carries an editor chosen by an older version over to the current keys;
    // run once at start-up before anything reads them.
    void migrateEditorSetting();

    QSettings &store() { return m_settings; }

private:
    std::optional<QString> string(const QString &key) const;
    QMap<QString, QString> stringMap(const QString &key) const;
    void setStringMap(const QString &key, const QMap<QString, QString> &map);

    QSettings &m_settings;
};

} // namespace tillery
