#include "TubeInfoPage.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QFontDatabase>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <tarnwick/gui/ReturnKey.h>

using namespace Qt::StringLiterals;

namespace query {

namespace {

constexpr int kEditorChars = 80;
constexpr int kEditorLines = 20;

} // namespace

TubeInfoPage::TubeInfoPage(ArvoOptionsEdit &edit, QWidget *parent)
    : QWidget(parent)
    , m_edit(edit)
    , m_name(new QComboBox)
    , m_delete(new QPushButton(u"DEL"_s))
    , m_sql(new QPlainTextEdit)
{
    m_name->setObjectName(u"tabName"_s);
    m_name->setEditable(true);
    m_name->setInsertPolicy(QComboBox::NoInsert);
    m_name->setMinimumContentsLength(ArvoOptionsEdit::kNameChars);
    auto *add = new QPushButton(u"ADD"_s);
    for (QPushButton *button : {add, m_delete}) {
        button->setAutoDefault(false);
        tarnwick::pressWithReturn(button);
    }
    add->setObjectName(u"addTab"_s);
    m_delete->setObjectName(u"deleteTab"_s);
    m_sql->setObjectName(u"tabSql"_s);
    m_sql->setAccessibleName(u"SQL text of the tab"_s);
    m_sql->setPlaceholderText(edit.exampleSql());
    m_sql->setLineWrapMode(QPlainTextEdit::NoWrap);
    m_sql->setTabChangesFocus(true);
    m_sql->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    const QFontMetrics metrics(m_sql->font());
    // The minimum shows the whole editor if the screen is large enough; a smaller window scrolls.
    m_sql->setMinimumSize(metrics.averageCharWidth() * kEditorChars / 2, metrics.lineSpacing() * kEditorLines / 2);

    auto *label = new QLabel(u"&Tab Name"_s);
    label->setBuddy(m_name);
    auto *row = new QHBoxLayout;
    row->addWidget(label);
    row->addWidget(m_name);
    row->addWidget(add);
    row->addWidget(m_delete);
    row->addStretch(1);
    auto *layout = new QVBoxLayout(this);
    layout->addLayout(row);
    layout->addWidget(m_sql, 1);

    connect(m_name, &QComboBox::currentIndexChanged, this, &TubeInfoPage::showTab);
    connect(m_name->lineEdit(), &QLineEdit::textEdited, this, [this](const QString &name) {
        // An empty name is refused; the list then keeps the old one.
        const int tab = m_name->currentIndex();
        if (m_edit.renameTab(tab, name))
            m_name->setItemText(tab, name);
    });
    connect(m_sql, &QPlainTextEdit::textChanged, this, [this] {
        if (const int tab = m_name->currentIndex(); tab >= 0 && !m_isShowing)
            m_edit.draft.tubeInfoTabs[tab].sql = m_sql->toPlainText();
    });
    connect(add, &QPushButton::clicked, this, &TubeInfoPage::addTab);
    connect(m_delete, &QPushButton::clicked, this, &TubeInfoPage::removeTab);
    refresh(0);
}

void TubeInfoPage::refresh(int tab)
{
    m_isShowing = true;
    m_name->clear();
    for (const ArvoOptions::TubeInfoTab &each : std::as_const(m_edit.draft.tubeInfoTabs))
        m_name->addItem(each.name);
    m_name->setCurrentIndex(std::min(tab, m_name->count() - 1));
    m_isShowing = false;
    showTab();
}

void TubeInfoPage::showTab()
{
    if (m_isShowing)
        return;
    const int tab = m_name->currentIndex();
    m_isShowing = true;
    m_sql->setPlainText(tab >= 0 ? m_edit.draft.tubeInfoTabs[tab].sql : QString());
    m_isShowing = false;
    m_sql->setEnabled(tab >= 0);
    m_delete->setEnabled(tab >= 0);
    m_name->setEnabled(m_name->count() > 0);
}

void TubeInfoPage::addTab()
{
    refresh(m_edit.addTab());
    m_name->setFocus();
    m_name->lineEdit()->selectAll();
}

void TubeInfoPage::removeTab()
{
    const int tab = m_name->currentIndex();
    if (m_edit.removeTab(tab))
        refresh(std::max(0, tab - 1));
}

} // namespace query
