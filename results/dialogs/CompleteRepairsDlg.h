#pragma once
#include <tarnwick/gui/JDialog.h>
#include <tarnwick/JDateTime.h>

#include <optional>

class QLineEdit;

namespace results {

/// Asks when repairs were completed. The present time is offered.
class CompleteRepairsDlg : public tarnwick::JDialog
{
    Q_OBJECT
public:
    /// Empty if the dialog was cancelled. count: of the repairs.
    static std::optional<tarnwick::JDateTime> ask(tarnwick::UserPrompts &prompts, int count, QWidget *parent);

    CompleteRepairsDlg(tarnwick::UserPrompts &prompts, int count, QWidget *parent = nullptr);
    const tarnwick::JDateTime &date() const { return m_date; }

protected:
    QString caption() const override { return QStringLiteral("Complete Repairs"); }
    bool store() override;

private:
    tarnwick::JDateTime m_date;
    QLineEdit *m_line;
};

} // namespace results
