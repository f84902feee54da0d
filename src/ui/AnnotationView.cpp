#include "ui/AnnotationView.h"

#include "model/AppModel.h"
#include "ui/AnnotationCanvas.h"
#include "ui/ChangesetText.h"
#include "ui/EmptyState.h"
#include "ui/PathLabel.h"
#include "ui/Spinner.h"
#include "ui/TextButton.h"

#include <QFrame>
#include <QHBoxLayout>
#include <QLabel>
#include <QShortcut>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

AnnotationView::AnnotationView(AppModel &model, WorkspaceTab page, QWidget *diffView, QWidget *parent)
    : QStackedWidget(parent)
    , m_model(model)
    , m_page(page)
    , m_diffView(diffView)
    , m_panel(new QWidget)
    , m_path(new PathLabel)
    , m_revision(new QLabel)
    , m_close(new TextButton)
    , m_body(new QStackedWidget)
    , m_message(new EmptyState(QString(), u"doc.text"_s, QString()))
    , m_canvas(new AnnotationCanvas)
{
    m_path->setObjectName(u"annotationPath"_s);
    m_revision->setTextFormat(Qt::PlainText);
    m_revision->setForegroundRole(QPalette::PlaceholderText);
    m_revision->setObjectName(u"annotationRevision"_s);
    m_close->setText(tr("Show Diff"));
    m_close->setObjectName(u"closeAnnotation"_s);
    m_close->setToolTip(tr("Close the annotation and show the diff again (Esc)"));
    m_close->setAccessibleName(tr("Show Diff"));
    connect(m_close, &QAbstractButton::clicked, this, [this] { m_model.closeAnnotation(); });
    auto *escape = new QShortcut(QKeySequence(Qt::Key_Escape), m_panel);
    escape->setContext(Qt::WidgetWithChildrenShortcut);
    connect(escape, &QShortcut::activated, this, [this] { m_model.closeAnnotation(); });

    QHBoxLayout *header = fileHeader(m_path);
    header->setContentsMargins(10, 4, 10, 4);
    header->addWidget(m_revision);
    header->addSpacing(8);
    header->addWidget(m_close);
    auto *divider = new QFrame;
    divider->setFrameShape(QFrame::HLine);
    divider->setFrameShadow(QFrame::Sunken);

    m_body->addWidget(loadingPage(tr("Annotating…")));
    m_body->addWidget(m_message);
    m_body->addWidget(m_canvas);
    auto *layout = new QVBoxLayout(m_panel);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addLayout(header);
    layout->addWidget(divider);
    layout->addWidget(m_body, 1);

    addWidget(m_diffView);
    addWidget(m_panel);
    connect(m_canvas, &AnnotationCanvas::changesetClicked, this, &AnnotationView::changesetClicked);
    connect(&model.annotation(), &Annotation::changed, this, &AnnotationView::refresh);
    refresh();
}

AnnotationView::Body AnnotationView::body() const
{
    return static_cast<Body>(m_body->currentIndex());
}

QString AnnotationView::message() const
{
    return m_message->title() + u'\n' + m_message->detail();
}

void AnnotationView::closeIfShown()
{
    if (isAnnotationShown())
        m_model.closeAnnotation();
}

void AnnotationView::showMessage(const QString &title, const QString &detail)
{
    m_message->setTitle(title);
    m_message->setDetail(detail);
    m_body->setCurrentIndex(static_cast<int>(Body::message));
}

void AnnotationView::refresh()
{
    const Annotation &annotation = m_model.annotation();
    const std::optional<Annotation::Subject> &subject = annotation.subject();
    if (!subject || subject->page != m_page) {
        setCurrentWidget(m_diffView);
        m_canvas->setLines({});
        return;
    }
    m_path->setFullText(subject->path);
    m_revision->setText(subject->node ? tr("at %1").arg(changesetText::shortHash(*subject->node))
                                      : tr("at the working copy’s parent"));
    switch (annotation.state()) {
    case Annotation::State::closed:
    case Annotation::State::loading:
        m_body->setCurrentIndex(static_cast<int>(Body::loading));
        break;
    case Annotation::State::failed:
        showMessage(tr("The file could not be annotated"), annotation.failure());
        break;
    case Annotation::State::loaded:
        switch (annotation.lines().content) {
        case FileAnnotation::Content::binary:
            showMessage(tr("Binary file"), tr("A binary file has no lines to annotate."));
            break;
        case FileAnnotation::Content::notUtf8:
            showMessage(tr("Not UTF-8 text"), tr("This file is not UTF-8 text, so its lines cannot be shown."));
            break;
        case FileAnnotation::Content::text:
            if (annotation.lines().lines.isEmpty()) {
                showMessage(tr("Empty file"), tr("This file has no lines."));
                break;
            }
            m_canvas->setLines(annotation.lines());
            m_body->setCurrentIndex(static_cast<int>(Body::lines));
            break;
        }
        break;
    }
    setCurrentWidget(m_panel);
    // Where Escape is heard.
    if (body() == Body::lines)
        m_canvas->setFocus();
    else
        m_close->setFocus();
}

} // namespace tillery
