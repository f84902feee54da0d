#pragma once

#include "RepositoryFixtures.h"
#include "ScriptedPrompts.h"

#include "model/AppModel.h"

#include <QSettings>
#include <QTemporaryDir>

#include <memory>

namespace tillery::test {

// An AppModel on settings in a temporary file, with scripted prompts and a
// recording desktop. The settings and the icon folder outlive restarts.
class ModelHarness {
public:
    ModelHarness();

    QSettings &settings() { return *m_settings; }
    ModelSettings modelSettings() { return ModelSettings(*m_settings); }
    QString iconFolder() const { return m_folder.filePath(QStringLiteral("Repository Icons")); }

    // A new model over the same settings, started.
    AppModel &start();
    AppModel &model() { return *m_model; }
    // Ends the model, as quitting does.
    void stop() { m_model.reset(); }
    // Waits until the model's background work and its continuations are done.
    bool settle(int timeoutMilliseconds = 20000);
    // Adds the repository to the started model, selected, and settles.
    bool adopt(const RepositoryFixture &repository);

    ScriptedPrompts prompts;
    RecordingDesktop desktop;
    // How many working folders the started model's live refresh may watch.
    std::optional<int> watchedFolderLimit;

private:
    QTemporaryDir m_folder;
    std::unique_ptr<QSettings> m_settings;
    std::unique_ptr<AppModel> m_model;
};

// The selected repository's working-copy file with this path; ends the test program when there is none.
WorkingFile workingFile(const AppModel &model, const QString &path);

} // namespace tillery::test
