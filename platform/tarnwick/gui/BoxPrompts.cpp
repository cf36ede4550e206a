#include "BoxPrompts.h"

#include "Guarded.h"
#include "Help.h"
#include "JDialog.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QShortcut>

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

/// Adds a Help button that leaves the box open; it and F1 open the guide at the message.
void addHelp(QMessageBox &box, int number)
{
    QPushButton *help = box.addButton(QMessageBox::Help);
    help->setObjectName(u"help"_s);
    help->disconnect(); // otherwise it would close the box
    const auto open = [&box, number] {
        const QString problem = openGuide(messageAnchor(number));
        if (!problem.isEmpty())
            box.setInformativeText(problem);
    };
    QObject::connect(help, &QPushButton::clicked, &box, open);
    QObject::connect(new QShortcut(QKeySequence(Qt::Key_F1), &box), &QShortcut::activated, &box, open);
}

int exec(QMessageBox &box, int number)
{
    if (number > 0)
        addHelp(box, number);
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
    box.setEscapeButton(QMessageBox::Ok);
    exec(box, number);
}

void BoxPrompts::showInformation(const QString &text)
{
    QMessageBox box(boxParent());
    prepare(box, QMessageBox::Information, 0, text);
    box.setStandardButtons(QMessageBox::Ok);
    exec(box, 0);
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
    switch (exec(box, number)) {
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
