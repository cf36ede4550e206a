#include "BoxPrompts.h"

#include "Guarded.h"
#include "JDialog.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>

namespace tarnwick {

using namespace Qt::StringLiterals;

BoxPrompts::BoxPrompts(QWidget *parent, StatusFunction showStatus)
    : m_parent(parent)
    , m_showStatus(std::move(showStatus))
{
}

// A box belongs over the active dialog, even if the prompts were created for the main window.
QWidget *BoxPrompts::boxParent() const
{
    QWidget *modal = QApplication::activeModalWidget();
    return modal ? modal : m_parent.data();
}

namespace {

int exec(QMessageBox &box)
{
    const UsualCursor usual;
    return box.exec();
}

} // namespace

static void prepare(QMessageBox &box, QMessageBox::Icon icon, int number, const QString &text)
{
    const QString program = QGuiApplication::applicationDisplayName();
    box.setWindowTitle(number > 0 ? u"%1 - %2"_s.arg(program, QString::number(number)) : program);
    box.setObjectName(u"messageBox"_s);
    box.setIcon(icon);
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse); // so that the user can copy the engine's text for support
    box.setText(text);
}

void BoxPrompts::showError(int severity, int number, const QString &text)
{
    QMessageBox box(boxParent());
    prepare(box, severity >= kErrorSeverity ? QMessageBox::Critical : QMessageBox::Warning, number, text);
    box.setStandardButtons(QMessageBox::Ok);
    exec(box);
}

void BoxPrompts::showInformation(const QString &text)
{
    QMessageBox box(boxParent());
    prepare(box, QMessageBox::Information, 0, text);
    box.setStandardButtons(QMessageBox::Ok);
    exec(box);
}

Answer BoxPrompts::ask(Buttons buttons, const QString &text, int number)
{
    QMessageBox box(boxParent());
    prepare(box, QMessageBox::Question, number, text);
    switch (buttons) {
    case Buttons::YesNo:
    case Buttons::NoYes:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        box.setEscapeButton(QMessageBox::No);
        if (buttons == Buttons::NoYes)
            box.setDefaultButton(QMessageBox::No);
        break;
    case Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        box.setEscapeButton(QMessageBox::Cancel);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        box.setEscapeButton(QMessageBox::Cancel);
        break;
    }
    switch (exec(box)) {
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::No:
        return Answer::No;
    default:
        return declined(buttons);
    }
}

void BoxPrompts::showStatus(const QString &text)
{
    if (auto *dialog = qobject_cast<JDialog *>(QApplication::activeModalWidget()))
        dialog->showMessage(text);
    else if (m_showStatus)
        m_showStatus(text);
}

} // namespace tarnwick
