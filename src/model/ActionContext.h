#pragma once

#include "model/Operations.h"
#include "model/VersionControl.h"
#include "records/Repository.h"
#include "records/WorkspaceTab.h"

#include <QString>

#include <functional>
#include <optional>

namespace tillery {

class ChosenLines;
class Desktop;
class DiffSelection;
class ShelfSelection;
class ModelSettings;
class Prompts;
class Workspace;

// What the model's action parts work with: the selected repository's state,
// the selections, the person's answers, the desktop and the means to run
// work. The model owns it and hands it to each part.
struct ActionContext {
    Workspace &workspace;
    DiffSelection &selection;
    ShelfSelection &shelves;
    ChosenLines &chosen;
    ModelSettings &settings;
    Prompts &prompts;
    Desktop &desktop;
    Operations &operations;
    // Reloads the selected repository.
    std::function<void()> refresh;
    // Adds a new repository to the list and selects it.
    std::function<void(const Repository &)> adopt;
    // Puts a page of the workspace on screen.
    std::function<void(WorkspaceTab)> showTab;

    // The selected repository with the backend of its kind.
    struct Selected {
        Repository repository;
        const VersionControl &backend;
    };
    std::optional<Selected> selected() const;

    // Runs `work` on the selected repository through perform() and refreshes
    // on success; does nothing without a selected repository.
    using Work = std::function<void(const VersionControl &, const QString &repositoryPath)>;
    void runAndRefresh(const QString &activity, Work work) const;
    // The same for work that talks to a remote (see performRemote()).
    using RemoteWork = std::function<void(const VersionControl &, const QString &, const RunControl &)>;
    void runRemoteAndRefresh(const QString &activity, RemoteWork work) const;
};

} // namespace tillery
