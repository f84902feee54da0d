#include "ui/DiffView.h"

#include "model/AppModel.h"
#include "ui/EmptyState.h"
#include "ui/Icons.h"
#include "ui/ImagePreview.h"
#include "ui/PathLabel.h"
#include "ui/ShownText.h"
#include "ui/Spinner.h"
#include "ui/ViewSettings.h"

#include <QFontDatabase>
#include <QFrame>
#include <QHBoxLayout>
#include <QMenu>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

DiffView::DiffView(AppModel &model, ViewSettings &settings, std::function<QString()> fileName, QString placeholder,
                   QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_settings(settings)
    , m_fileName(std::move(fileName))
    , m_path(new PathLabel)
    , m_settingsButton(new QToolButton)
    , m_body(new QStackedWidget)
    , m_image(new ImagePreview)
    , m_empty(new EmptyState(tr("Nothing Selected"), u"doc.text.magnifyingglass"_s, placeholder))
    , m_message(new QPlainTextEdit)
    , m_canvas(new DiffCanvas)
{
    m_path->setObjectName(u"diffPath"_s);

    m_settingsButton->setIcon(symbolIcon(u"gearshape"_s));
    m_settingsButton->setAccessibleName(tr("Diff Settings"));
    m_settingsButton->setToolTip(tr("Diff Settings"));
    m_settingsButton->setAutoRaise(true);
    m_settingsButton->setPopupMode(QToolButton::InstantPopup);
    auto *menu = new QMenu(m_settingsButton);
    menu->addSection(tr("Diff Display"));
    QAction *unified = menu->addAction(tr("Unified"));
    QAction *split = menu->addAction(tr("Split"));
    menu->addSeparator();
    QAction *ignoreWhitespace = menu->addAction(tr("Ignore Whitespace Changes"));
    ignoreWhitespace->setObjectName(u"ignoreWhitespace"_s);
    ignoreWhitespace->setCheckable(true);
    const auto markWhitespace = [this, ignoreWhitespace] {
        ignoreWhitespace->setChecked(m_model.diffSelection().whitespace() == WhitespaceChanges::ignored);
        ignoreWhitespace->setEnabled(m_model.canChangeDiffWhitespace());
    };
    markWhitespace();
    connect(&model.diffSelection(), &DiffSelection::whitespaceChanged, this, markWhitespace);
    connect(&model.chosenLines(), &ChosenLines::changed, this, markWhitespace);
    connect(ignoreWhitespace, &QAction::triggered, this, [this](bool ignore) {
        m_model.setDiffWhitespace(ignore ? WhitespaceChanges::ignored : WhitespaceChanges::shown);
    });
    m_settingsButton->setMenu(menu);
    const auto markLayout = [unified, split](DiffCanvas::Layout layout) {
        unified->setIcon(layout == DiffCanvas::Layout::unified ? symbolIcon(u"checkmark"_s) : QIcon());
        split->setIcon(layout == DiffCanvas::Layout::split ? symbolIcon(u"checkmark"_s) : QIcon());
    };
    connect(unified, &QAction::triggered, this, [this] { m_settings.setDiffLayout(DiffCanvas::Layout::unified); });
    connect(split, &QAction::triggered, this, [this] { m_settings.setDiffLayout(DiffCanvas::Layout::split); });
    connect(&m_settings, &ViewSettings::diffLayoutChanged, this, [this, markLayout](DiffCanvas::Layout layout) {
        markLayout(layout);
        m_canvas->setLayout(layout);
    });
    markLayout(m_settings.diffLayout());
    m_canvas->setLayout(m_settings.diffLayout());

    QHBoxLayout *header = fileHeader(m_path);
    header->setContentsMargins(10, 4, 6, 4);
    header->addWidget(m_settingsButton);

    QFont messageFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    messageFont.setPointSize(12);
    m_message->setFont(messageFont);
    m_message->setReadOnly(true);
    m_message->setAccessibleName(tr("Diff message"));
    m_message->setFrameShape(QFrame::NoFrame);
    m_message->document()->setDocumentMargin(12);

    m_body->addWidget(m_image);
    m_body->addWidget(loadingPage(tr("Loading Diff…")));
    m_body->addWidget(m_empty);
    m_body->addWidget(m_message);
    m_body->addWidget(m_canvas);

    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(header);
    layout->addWidget(divider);
    layout->addWidget(m_body, 1);

    const DiffSelection &selection = model.diffSelection();
    for (auto signal : {&DiffSelection::diffChanged, &DiffSelection::previewImageChanged,
                        &DiffSelection::selectedFileChanged, &DiffSelection::selectedChangesetFileChanged})
        connect(&selection, signal, this, &DiffView::refresh);
    connect(&selection, &DiffSelection::showDiffLoadingIndicatorChanged, this, &DiffView::refresh);
    connect(&model.workspace(), &Workspace::tabChanged, this, &DiffView::refresh);
    connect(&model.chosenLines(), &ChosenLines::changed, m_canvas->viewport(), qOverload<>(&QWidget::update));
    connect(m_canvas, &DiffCanvas::choiceClicked, this, &DiffView::chooseClickedLine);
    connect(m_canvas, &DiffCanvas::choiceKeyPressed, this, [this](const QList<qsizetype> &lines) {
        const ChosenLines &chosen = m_model.chosenLines();
        // Any line left out: all are chosen; else all are left out.
        const bool choose = std::any_of(lines.cbegin(), lines.cend(), [&chosen](qsizetype line) {
            const std::optional<Qt::CheckState> state = chosen.shownLineState(line);
            return state && *state != Qt::Checked;
        });
        for (const qsizetype line : lines)
            m_model.setShownLinesChosen(line, line, choose);
    });
    m_canvas->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_canvas, &QWidget::customContextMenuRequested, this, &DiffView::showLinesMenu);
    refresh();
}

void DiffView::chooseClickedLine(qsizetype line, bool extendsRange)
{
    if (extendsRange && m_lastChoice >= 0) {
        m_model.setShownLinesChosen(m_lastChoice, line, m_lastChoiceWasChoosing);
    } else {
        m_lastChoiceWasChoosing = m_model.chosenLines().shownLineState(line) != Qt::Checked;
        m_model.setShownLinesChosen(line, line, m_lastChoiceWasChoosing);
    }
    m_lastChoice = line;
}

void DiffView::showLinesMenu(const QPoint &position)
{
    if (!m_model.chosenLines().canChooseShownLines())
        return;
    QMenu menu(this);
    const QList<qsizetype> selected = m_canvas->selectedUnifiedLines();
    const bool anyChanged =
        !selected.isEmpty() && m_model.chosenLines().shownChanges(selected.first(), selected.last()).has_value();
    QAction *discardLines = menu.addAction(tr("Discard Selected Lines"));
    discardLines->setEnabled(anyChanged);
    connect(discardLines, &QAction::triggered, this,
            [this, selected] { m_model.discardShownLines(selected.first(), selected.last()); });
    // The hunk the pointer is in: the header above it.
    const PresentedDiffDocument &document = m_model.diffSelection().diff();
    qsizetype header = m_canvas->unifiedLineAt(position);
    while (header >= 0 && document.unifiedLines[header].kind != DiffLineKind::hunk)
        --header;
    QAction *discardHunk = menu.addAction(tr("Discard This Hunk"));
    discardHunk->setEnabled(header >= 0);
    connect(discardHunk, &QAction::triggered, this, [this, header] { m_model.discardShownLines(header, header); });
    menu.addSeparator();
    QAction *copy = menu.addAction(tr("Copy"));
    copy->setEnabled(!selected.isEmpty());
    connect(copy, &QAction::triggered, m_canvas, &DiffCanvas::copySelection);
    menu.exec(m_canvas->viewport()->mapToGlobal(position));
}

void DiffView::setPlaceholder(const QString &placeholder)
{
    m_empty->setDetail(placeholder);
}

void DiffView::refresh()
{
    const DiffSelection &selection = m_model.diffSelection();
    m_path->setFullText(selection.comparisonTitle().value_or(m_fileName()));
    const PresentedDiffDocument &document = selection.diff();
    if (!selection.previewImage().isNull()) {
        m_image->setImage(selection.previewImage(), selection.previewCaption());
        m_body->setCurrentIndex(static_cast<int>(Body::image));
    } else if (selection.showDiffLoadingIndicator()) {
        m_body->setCurrentIndex(static_cast<int>(Body::loading));
    } else if (document.text.isEmpty()) {
        m_body->setCurrentIndex(static_cast<int>(Body::empty));
    } else if (document.unifiedLines.isEmpty()) {
        if (m_message->toPlainText() != document.text)
            m_message->setPlainText(document.text);
        m_body->setCurrentIndex(static_cast<int>(Body::message));
    } else {
        if (m_shownRows != document.unifiedLines.constData()) {
            m_canvas->setDocument(document);
            m_shownRows = document.unifiedLines.constData();
            m_lastChoice = -1;
        }
        m_canvas->setChoices(m_model.chosenLines().canChooseShownLines()
                                 ? DiffCanvas::ChoiceState([this](qsizetype line) {
                                       return m_model.chosenLines().shownLineState(line);
                                   })
                                 : DiffCanvas::ChoiceState());
        m_body->setCurrentIndex(static_cast<int>(Body::rows));
    }
}

} // namespace tillery
