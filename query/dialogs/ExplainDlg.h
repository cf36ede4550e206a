#pragma once
#include <query/StatementWords.h>
#include <tarnwick/gui/JDialog.h>

class QGridLayout;

namespace query {

/// "Explain": tells in words what the statements of a text read and what would make them faster. An index that helps is
/// made with one click.
class ExplainDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    ExplainDlg(const QList<StatementWords> &statements, tarnwick::UserPrompts &prompts, QWidget *parent = nullptr);

    /// After the dialog was accepted: the statement that makes the chosen index; empty for none.
    const QString &chosen() const { return m_chosen; }

protected:
    QString caption() const override { return QStringLiteral("Explain"); }

private:
    void addAdvice(QGridLayout &rows, const StatementWords::Advice &advice);

    QString m_chosen;
};

} // namespace query
