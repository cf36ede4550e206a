#include "ListOpenDlg.h"

#include <db/ListNames.h>
#include <tarnwick/gui/Help.h>
#include <tarnwick/gui/StateKeeper.h>
#include <tarnwick/gui/TableText.h>

#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

namespace db {

using namespace Qt::StringLiterals;

QString ListOpenDlg::choose(DatabaseSession &session, const Setup &setup, QWidget *parent)
{
    const std::optional<QStringList> names = fetchListNames(session, setup.column, setup.table);
    if (!names)
        return {};
    ListOpenDlg dialog(setup, *names, parent);
    return dialog.exec() == Accepted ? dialog.name() : QString();
}

ListOpenDlg::ListOpenDlg(const Setup &setup, const QStringList &names, QWidget *parent)
    : QDialog(parent)
    , m_list(new QListWidget)
    , m_prompt(new QLineEdit)
{
    setObjectName(u"listOpenDlg"_s);
    setWindowTitle(setup.title);
    m_list->setObjectName(u"names"_s);
    m_list->setAccessibleName(setup.label);
    m_list->setUniformItemSizes(true);
    tarnwick::TableText::follow(m_list);
    m_list->addItems(names);
    m_prompt->setObjectName(u"name"_s);
    m_prompt->setText(setup.initialName);
    auto *label = new QLabel(setup.label);
    label->setBuddy(m_prompt);
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addWidget(label);
    layout->addWidget(m_prompt);
    layout->addWidget(buttons);
    selectTyped(setup.initialName);
    connect(m_prompt, &QLineEdit::textEdited, this, &ListOpenDlg::selectTyped);
    connect(m_list, &QListWidget::currentTextChanged, this, [this](const QString &text) {
        if (!text.isEmpty())
            m_prompt->setText(text);
    });
    // The name that the typed text has selected is current already.
    connect(m_list, &QListWidget::itemClicked, this, &ListOpenDlg::take);
    connect(m_list, &QListWidget::itemActivated, this, [this](const QListWidgetItem *item) {
        take(item);
        accept();
    });
    m_prompt->installEventFilter(this);
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    tarnwick::addHelp(*this, *buttons);
    m_prompt->setFocus();
    m_prompt->selectAll();
    constexpr QSize kFirstSize{320, 380};
    resize(kFirstSize);
    tarnwick::StateKeeper::keep(this);
}

void ListOpenDlg::selectTyped(const QString &text)
{
    // The typed text stays in the prompt, so the list must not put its own there.
    const QSignalBlocker blocker(m_list);
    const QList<QListWidgetItem *> found =
        text.isEmpty() ? QList<QListWidgetItem *>() : m_list->findItems(text, Qt::MatchStartsWith);
    m_list->setCurrentItem(found.value(0));
    if (!found.isEmpty())
        m_list->scrollToItem(found.constFirst());
}

void ListOpenDlg::take(const QListWidgetItem *item)
{
    m_prompt->setText(item->text());
}

bool ListOpenDlg::eventFilter(QObject *watched, QEvent *event)
{
    const int key = event->type() == QEvent::KeyPress ? static_cast<QKeyEvent *>(event)->key() : 0;
    if ((key != Qt::Key_Down && key != Qt::Key_Up) || m_list->count() == 0)
        return QDialog::eventFilter(watched, event);
    // The first key takes the name that the typed text has selected.
    const QListWidgetItem *current = m_list->currentItem();
    if (current && current->text() != m_prompt->text())
        take(current);
    else
        m_list->setCurrentRow(qBound(0, m_list->currentRow() + (key == Qt::Key_Down ? 1 : -1), m_list->count() - 1));
    return true;
}

QString ListOpenDlg::name() const
{
    return m_prompt->text();
}

} // namespace db
