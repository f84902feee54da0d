#pragma once

#include "records/Repository.h"

#include <QList>
#include <QString>
#include <QStringList>

namespace tillery {

class AppModel;
class MainWindow;

// Lets the model finish what it started (refreshes, loads) before a picture is taken.
void waitUntilIdle(const AppModel &model);

// The page asked for with a file selected: a changed file on the Changes
// page (the first one when `file` is empty); on the History page the newest
// changeset and, when it has it, the file.
void showPage(AppModel &model, const QString &tab, const QString &file);

// Pictures of everything there is to look at, in the folder: both pages of
// each repository, every sheet and every settings tab, in the light and in
// the dark palette. Returns the files written.
QStringList takeScreenshotTour(MainWindow &window, AppModel &model, const QList<Repository> &repositories,
                               const QString &folder);

} // namespace tillery
