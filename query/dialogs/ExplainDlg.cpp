#include "ExplainDlg.h"

#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace query {

ExplainDlg::ExplainDlg(const QList<StatementWords> &statements, tarnwick::UserPrompts &prompts, QWidget *parent)
    : JDialog(prompts, nullptr, u"explainDlg"_s, parent)
{
    auto *text = new QPlainTextEdit(textOf(statements));
    text->setObjectName(u"words"_s);
    text->setAccessibleName(u"What the statement reads"_s);
    text->setReadOnly(true);
    text->setTabChangesFocus(true);
    body().addWidget(text, 1);
    auto *rows = new QGridLayout;
    rows->setColumnStretch(0, 1);
    for (const StatementWords &statement : statements) {
        for (const StatementWords::Advice &advice : statement.advice) {
            if (!advice.create.isEmpty())
                addAdvice(*rows, advice);
        }
    }
    body().addLayout(rows);
    finish(text, {760, 420});
}

void ExplainDlg::addAdvice(QGridLayout &rows, const StatementWords::Advice &advice)
{
    const int row = rows.rowCount();
    auto *statement = new QLabel(advice.create);
    statement->setTextFormat(Qt::PlainText);
    statement->setWordWrap(true);
    rows.addWidget(statement, row, 0);
    auto *cell = new QHBoxLayout;
    QPushButton *button = addButton(*cell, u"Make Index"_s, u"makeIndex%1"_s.arg(row),
                                    u"Execute this statement in the editor"_s, [this, create = advice.create] {
                                        m_chosen = create;
                                        accept();
                                    });
    button->setAccessibleDescription(advice.create);
    rows.addLayout(cell, row, 1);
}

} // namespace query
