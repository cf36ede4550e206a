#include "ProgressDialog.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDialogButtonBox>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace tarnwick {

using namespace Qt::StringLiterals;

class ProgressDialog::Dialog : public QDialog
{
public:
    Dialog(QWidget *parent, const QString &title)
        : QDialog(parent)
        , what(new QLabel(this))
        , bar(new QProgressBar(this))
        , buttons(new QDialogButtonBox(QDialogButtonBox::Cancel, this))
    {
        setObjectName(u"progressDialog"_s);
        setWindowTitle(title);
        setWindowModality(Qt::ApplicationModal);
        setMinimumWidth(360);
        what->setTextFormat(Qt::PlainText);
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(what);
        layout->addWidget(bar);
        layout->addWidget(buttons);
        connect(buttons, &QDialogButtonBox::rejected, this, &Dialog::reject);
    }

    // Called for Escape, the close button and Cancel. The dialog stays open until the work has noticed the request.
    void reject() override
    {
        isCancelled = true;
        buttons->button(QDialogButtonBox::Cancel)->setEnabled(false);
        what->setText(tr("Stopping ..."));
    }

    QLabel *what;
    QProgressBar *bar;
    QDialogButtonBox *buttons;
    bool isCancelled = false;
};

ProgressDialog::ProgressDialog(QWidget *parent, const QString &title, std::chrono::milliseconds delay)
    : m_dialog(std::make_unique<Dialog>(parent, title))
    , m_delay(delay)
{
    m_sinceStart.start();
    m_sincePump.start();
}

ProgressDialog::~ProgressDialog() = default;

const QDialog *ProgressDialog::dialog() const
{
    return m_dialog.get();
}

void ProgressDialog::report(qint64 done, qint64 total, const QString &what)
{
    constexpr int kSteps = 1000; // row counts can exceed the range of the bar's int
    if (!m_dialog->isCancelled)
        m_dialog->what->setText(what);
    m_dialog->bar->setRange(0, total > 0 ? kSteps : 0);
    if (total > 0)
        m_dialog->bar->setValue(int(double(qMin(done, total)) / double(total) * kSteps));
    showWhenLate();
    pumpEvents();
}

void ProgressDialog::showWhenLate()
{
    if (!m_dialog->isVisible() && m_sinceStart.elapsed() >= m_delay.count())
        m_dialog->show();
}

bool ProgressDialog::cancelled()
{
    constexpr qint64 kPumpEvery = 50; // ms; Cancel is handled even if no report arrives
    // A single long step, such as a database statement, never reports, but checks for cancellation.
    showWhenLate();
    if (m_dialog->isVisible() && m_sincePump.elapsed() >= kPumpEvery)
        pumpEvents();
    return m_dialog->isCancelled;
}

void ProgressDialog::pumpEvents()
{
    if (m_pumping)
        return;
    const QScopedValueRollback guard(m_pumping, true);
    // While the modal dialog is visible, only it receives input. Before, input stays in the queue.
    QCoreApplication::processEvents(m_dialog->isVisible() ? QEventLoop::AllEvents : QEventLoop::ExcludeUserInputEvents);
    m_sincePump.restart();
}

} // namespace tarnwick
