#include "GridFilterRow.h"

#include <QKeyEvent>
#include <QLineEdit>

using namespace Qt::StringLiterals;

namespace tarnwick {

namespace {

constexpr int kTypingPause = 300; ///< milliseconds

} // namespace

GridFilterRow::GridFilterRow(const GridLayout &layout, QWidget *parent)
    : QWidget(parent)
    , m_layout(layout)
    , m_scrolled(new QWidget(this))
{
    setAutoFillBackground(true);
    m_delay.setSingleShot(true);
    m_delay.setInterval(kTypingPause);
    connect(&m_delay, &QTimer::timeout, this, &GridFilterRow::filterTyped);
}

void GridFilterRow::setColumns(const GridModel &model)
{
    qDeleteAll(m_fields);
    m_fields.clear();
    for (int i = 0; i < model.columnCount(); ++i) {
        auto *field = new QLineEdit(this);
        field->setObjectName(u"filter%1"_s.arg(i));
        field->setPlaceholderText(u"Filter"_s);
        field->setAccessibleName(u"Filter "_s + model.column(i).title);
        field->setToolTip(u"text: contains it; * and ?: pattern; = <> < <= > >= value; 20..40: from 20 to 40\n"
                          "= alone: empty; <> alone: not empty"_s);
        field->installEventFilter(this);
        connect(field, &QLineEdit::textEdited, this, [this] { m_delay.start(); });
        m_fields.append(field);
    }
    place();
}

void GridFilterRow::place()
{
    if (isHidden() || m_fields.size() != m_layout.count())
        return;
    const int fixed = m_layout.fixedWidth();
    m_scrolled->setGeometry(fixed, 0, std::max(0, width() - fixed), height());
    for (int i = 0; i < m_fields.size(); ++i) {
        QLineEdit *field = m_fields[i];
        QWidget *home = m_layout.isFrozen(i) ? static_cast<QWidget *>(this) : m_scrolled;
        if (field->parentWidget() != home)
            field->setParent(home);
        field->setGeometry(m_layout.x(i) - (home == m_scrolled ? fixed : 0), 0, m_layout.width(i), height());
        field->show();
    }
}

QStringList GridFilterRow::texts() const
{
    QStringList texts;
    for (const QLineEdit *field : m_fields)
        texts.append(field->text());
    return texts;
}

void GridFilterRow::setTexts(const QStringList &texts)
{
    m_delay.stop();
    for (qsizetype i = 0; i < m_fields.size(); ++i)
        m_fields[i]->setText(texts.value(i));
}

void GridFilterRow::clear()
{
    setTexts({});
}

void GridFilterRow::focusColumn(int column)
{
    if (column < m_fields.size())
        m_fields[column]->setFocus(Qt::ShortcutFocusReason);
}

QSize GridFilterRow::sizeHint() const
{
    return {0, QLineEdit().sizeHint().height()};
}

bool GridFilterRow::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Escape) {
            Q_EMIT closed();
            return true;
        }
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            m_delay.stop();
            Q_EMIT filterTyped();
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}

} // namespace tarnwick
