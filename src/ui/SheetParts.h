#pragma once

#include <QLabel>
#include <QString>

namespace tillery {

// The pieces every sheet is built from.
QLabel *sheetTitle(const QString &text);
// A wrapped line in the quiet secondary colour; words between backticks are set as code.
QLabel *secondaryLabel(const QString &text);
// A name (of a folder, say) in the same colour, shown exactly as it is.
QLabel *quietNameLabel(const QString &name);
// The text as HTML, every character escaped, with `word` spans as <code>; an unpaired backtick stays as it is.
QString htmlWithCodeSpans(const QString &text);
// A wrapped line that says why the sheet cannot go on, hidden while it can.
class ProblemLabel final : public QLabel {
    Q_OBJECT

public:
    explicit ProblemLabel(QWidget *parent = nullptr);
    // Shows the reason; an empty one hides the line.
    void setProblem(const QString &problem);
};

} // namespace tillery
