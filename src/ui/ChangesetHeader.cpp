#include "ui/ChangesetHeader.h"

#include "model/AppModel.h"
#include "ui/ChangesetText.h"
#include "ui/Icons.h"
#include "ui/TextButton.h"

#include <QFontDatabase>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace tillery {

namespace {

QLabel *valueLabel()
{
    auto *label = new QLabel;
    label->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    label->setTextFormat(Qt::PlainText);
    return label;
}

QLabel *fieldLabel(const QString &text)
{
    auto *label = new QLabel(text);
    label->setForegroundRole(QPalette::PlaceholderText);
    return label;
}

} // namespace

ChangesetHeader::ChangesetHeader(AppModel &model, QWidget *parent)
    : QWidget(parent)
    , m_model(model)
    , m_summary(valueLabel())
    , m_body(valueLabel())
    , m_hashLabel(fieldLabel(tr("Changeset")))
    , m_hash(new TextButton)
    , m_copy(new QToolButton)
    , m_author(valueLabel())
    , m_date(valueLabel())
    , m_branch(valueLabel())
{
    QFont summaryFont = m_summary->font();
    summaryFont.setPointSizeF(summaryFont.pointSizeF() * 1.25);
    summaryFont.setWeight(QFont::DemiBold);
    m_summary->setFont(summaryFont);
    m_summary->setWordWrap(true);
    m_body->setWordWrap(true);

    QFont hashFont = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    hashFont.setPointSizeF(font().pointSizeF());
    m_hash->setFont(hashFont);
    m_hash->setToolTip(tr("Copy full hash"));
    m_hash->setAccessibleName(tr("Copy full hash"));
    m_copy->setIcon(symbolIcon(u"doc.on.doc"_s));
    m_copy->setIconSize(QSize(12, 12));
    m_copy->setAutoRaise(true);
    m_copy->setToolTip(tr("Copy hash"));
    m_copy->setAccessibleName(tr("Copy hash"));
    const auto copy = [this] { m_model.copyText(m_node); };
    connect(m_hash, &QToolButton::clicked, this, copy);
    connect(m_copy, &QToolButton::clicked, this, copy);

    auto *hashRow = new QHBoxLayout;
    hashRow->setContentsMargins(0, 0, 0, 0);
    hashRow->setSpacing(2);
    hashRow->addWidget(m_hash);
    hashRow->addWidget(m_copy);
    hashRow->addStretch();

    auto *fields = new QGridLayout;
    fields->setHorizontalSpacing(10);
    fields->setVerticalSpacing(3);
    fields->addWidget(m_hashLabel, 0, 0, Qt::AlignLeft | Qt::AlignVCenter);
    fields->addLayout(hashRow, 0, 1);
    fields->addWidget(fieldLabel(tr("Author")), 1, 0);
    fields->addWidget(m_author, 1, 1);
    fields->addWidget(fieldLabel(tr("Date")), 2, 0);
    fields->addWidget(m_date, 2, 1);
    fields->addWidget(fieldLabel(tr("Branch")), 3, 0);
    fields->addWidget(m_branch, 3, 1);
    fields->setColumnStretch(1, 1);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->setSpacing(6);
    layout->addWidget(m_summary);
    layout->addWidget(m_body);
    layout->addLayout(fields);
}

void ChangesetHeader::showChangeset(const Changeset &changeset, const KindTraits &traits)
{
    m_node = changeset.node;
    m_summary->setText(changesetText::title(changeset, traits));
    const QString body = changesetText::body(changeset);
    m_body->setText(body);
    m_body->setVisible(!body.isEmpty());
    m_hashLabel->setText(capitalized(traits.changeset));
    m_hash->setText(changesetText::shortHash(changeset.node));
    m_author->setText(changeset.author);
    m_date->setText(changesetText::longDate(changeset.date));
    m_branch->setText(changeset.branch);
}

} // namespace tillery
