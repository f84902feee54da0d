#pragma once

#include "integrations/LaunchPlan.h"

#include <QCoreApplication>
#include <QString>
#include <QStringList>

#include <variant>

namespace tillery {

struct ActionContext;

// Opening the repository or its files elsewhere: in the chosen editor, in
// a terminal, in the file manager or their default application, and
// copying their paths. A failure is presented with the title of the action.
class OpenActions {
    Q_DECLARE_TR_FUNCTIONS(tillery::OpenActions)

public:
    explicit OpenActions(const ActionContext &context)
        : m_context(context)
    {
    }

    // The target is a file of the selected repository or the repository
    // itself, as an absolute path.
    void openInEditor(const QString &targetPath);
    void openInTerminal();
    // Opens the target with an application the person picked.
    void openWith(const QString &targetPath, const QString &applicationPath);
    // "Open in VS Code": the editor's name as the menu shows it.
    QString editorTitle() const;

    void reveal(const QString &path);
    void openWithDefaultApplication(const QString &path);
    void copyPaths(const QStringList &paths);
    void copyText(const QString &text);

private:
    void launchInBackground(const QString &title, const std::variant<LaunchPlan, QString> &plan);

    const ActionContext &m_context;
};

} // namespace tillery
