#include "model/ModelSettings.h"

#include "integrations/ApplicationBundle.h"
#include "integrations/ExternalEditor.h"

#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace tillery {

ModelSettings::ModelSettings(QSettings &settings)
    : m_settings(settings)
{
}

std::optional<QString> ModelSettings::string(const QString &key) const
{
    const QVariant value = m_settings.value(key);
    if (value.typeId() != QMetaType::QString)
        return std::nullopt;
    return value.toString();
}

QMap<QString, QString> ModelSettings::stringMap(const QString &key) const
{
    const QVariant value = m_settings.value(key);
    if (value.typeId() != QMetaType::QVariantMap)
        return {};
    QMap<QString, QString> map;
    const QVariantMap stored = value.toMap();
    for (auto entry = stored.cbegin(); entry != stored.cend(); ++entry) {
        if (entry.value().typeId() != QMetaType::QString)
            return {};
        map.insert(entry.key(), entry.value().toString());
    }
    return map;
}

void ModelSettings::setStringMap(const QString &key, const QMap<QString, QString> &map)
{
    QVariantMap stored;
    for (auto entry = map.cbegin(); entry != map.cend(); ++entry)
        stored.insert(entry.key(), entry.value());
    m_settings.setValue(key, stored);
}

QList<Repository> ModelSettings::repositories() const
{
    const QVariant value = m_settings.value(settingsKeys::repositories);
    if (value.typeId() != QMetaType::QByteArray)
        return {};
    const QJsonDocument document = QJsonDocument::fromJson(value.toByteArray());
    if (!document.isArray())
        return {};
    QList<Repository> repositories;
    for (const QJsonValue &element : document.array()) {
        const std::optional<Repository> repository =
            element.isObject() ? decodeRepository(element.toObject()) : std::nullopt;
        if (!repository)
            return {};
        repositories.append(*repository);
    }
    return repositories;
}

void ModelSettings::setRepositories(const QList<Repository> &repositories)
{
    QJsonArray array;
    for (const Repository &repository : repositories)
        array.append(encodeRepository(repository));
    m_settings.setValue(settingsKeys::repositories, QJsonDocument(array).toJson(QJsonDocument::Compact));
}

std::optional<RepositorySidebarLayout> ModelSettings::sidebarLayout() const
{
    const QVariant value = m_settings.value(settingsKeys::sidebarLayout);
    if (value.typeId() != QMetaType::QByteArray)
        return std::nullopt;
    const auto decoded = decodeSidebarLayout(value.toByteArray());
    if (const auto *layout = std::get_if<RepositorySidebarLayout>(&decoded))
        return *layout;
    return std::nullopt;
}

void ModelSettings::setSidebarLayout(const RepositorySidebarLayout &layout)
{
    m_settings.setValue(settingsKeys::sidebarLayout, encodeSidebarLayout(layout));
}

std::optional<QString> ModelSettings::lastSelectedRepository() const
{
    return string(settingsKeys::lastSelectedRepository);
}

void ModelSettings::setLastSelectedRepository(const std::optional<QString> &path)
{
    if (path)
        m_settings.setValue(settingsKeys::lastSelectedRepository, *path);
    else
        m_settings.remove(settingsKeys::lastSelectedRepository);
}

QMap<QString, QString> ModelSettings::selectedFilesByRepository() const
{
    return stringMap(settingsKeys::selectedFilesByRepository);
}

void ModelSettings::rememberSelectedFile(const QString &repositoryPath, const QString &filePath)
{
    QMap<QString, QString> files = selectedFilesByRepository();
    files.insert(repositoryPath, filePath);
    setStringMap(settingsKeys::selectedFilesByRepository, files);
}

QMap<QString, QString> ModelSettings::repositoryIconFiles() const
{
    return stringMap(settingsKeys::repositoryIconFiles);
}

void ModelSettings::setRepositoryIconFiles(const QMap<QString, QString> &files)
{
    setStringMap(settingsKeys::repositoryIconFiles, files);
}

QString ModelSettings::commitUsername() const
{
    return string(settingsKeys::commitUsername).value_or(QString());
}

void ModelSettings::setCommitUsername(const QString &name)
{
    m_settings.setValue(settingsKeys::commitUsername, name);
}

QString ModelSettings::buttonAppearance() const
{
    return string(settingsKeys::buttonAppearance).value_or(settingsDefaults::buttonAppearance);
}

QString ModelSettings::diffLayout() const
{
    return string(settingsKeys::diffLayout).value_or(settingsDefaults::diffLayout);
}

WhitespaceChanges ModelSettings::diffWhitespace() const
{
    return string(settingsKeys::diffWhitespace) == u"Ignored"_s ? WhitespaceChanges::ignored : WhitespaceChanges::shown;
}

void ModelSettings::setDiffWhitespace(WhitespaceChanges whitespace)
{
    m_settings.setValue(settingsKeys::diffWhitespace,
                        whitespace == WhitespaceChanges::ignored ? u"Ignored"_s : u"Shown"_s);
}

QString ModelSettings::defaultTerminal() const
{
    return string(settingsKeys::defaultTerminal).value_or(settingsDefaults::defaultTerminal);
}

std::optional<QString> ModelSettings::defaultTerminalIdentifier() const
{
    return string(settingsKeys::defaultTerminal);
}

std::optional<QString> ModelSettings::editorSelection() const
{
    return string(settingsKeys::editorSelection);
}

QString ModelSettings::editorPath() const
{
    return string(settingsKeys::editorPath).value_or(QString());
}

QString ModelSettings::editorArguments() const
{
    return string(settingsKeys::editorArguments).value_or(settingsDefaults::editorArguments);
}

EditorChoice ModelSettings::editorChoice() const
{
    return EditorChoice{editorSelection(), editorPath(), editorArguments()};
}

void ModelSettings::setEditorChoice(const EditorChoice &choice)
{
    if (choice.selection)
        m_settings.setValue(settingsKeys::editorSelection, *choice.selection);
    else
        m_settings.remove(settingsKeys::editorSelection);
    m_settings.setValue(settingsKeys::editorPath, choice.path);
    m_settings.setValue(settingsKeys::editorArguments, choice.arguments);
}

void ModelSettings::setDefaultTerminal(const QString &identifier)
{
    m_settings.setValue(settingsKeys::defaultTerminal, identifier);
}

void ModelSettings::migrateEditorSetting()
{
    if (editorSelection())
        return;
    const std::optional<QString> legacyPath = string(settingsKeys::legacyEditor);
    if (!legacyPath || !QFileInfo::exists(*legacyPath) || !isApplicationBundle(*legacyPath))
        return;
    const std::optional<QString> identifier = bundleInfoString(*legacyPath, u"CFBundleIdentifier"_s);
    if (!identifier)
        return;
    if (const std::optional<ExternalEditor> known = externalEditorWithBundleIdentifier(*identifier)) {
        m_settings.setValue(settingsKeys::editorSelection, rawValue(*known));
        return;
    }
    m_settings.setValue(settingsKeys::editorSelection, rawValue(ExternalEditor::other));
    m_settings.setValue(settingsKeys::editorPath, *legacyPath);
    if (!m_settings.contains(settingsKeys::editorArguments))
        m_settings.setValue(settingsKeys::editorArguments, settingsDefaults::editorArguments);
}

} // namespace tillery
