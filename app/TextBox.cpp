#include "TextBox.h"

#include "LineIcon.h"

#include <app/logic/AboutText.h>
#include <app/logic/KeyList.h>
#include <app/logic/ProjectSession.h>

#include <tarnwick/FailureLog.h>
#include <tarnwick/gui/Help.h>

#include <QBoxLayout>
#include <QClipboard>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace app {

void showTextBox(QWidget *parent, const QString &title, const QString &text, TextStart start, QWidget *head)
{
    QDialog box(parent);
    box.setObjectName(u"textBox"_s);
    box.setWindowTitle(title);
    auto *view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setTabChangesFocus(true);
    view->setAccessibleName(title);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFrameShape(QFrame::NoFrame);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    QPushButton *copy = buttons->addButton(u"&Copy"_s, QDialogButtonBox::ActionRole);
    copy->setObjectName(u"copyText"_s);
    copy->setToolTip(u"Copy the whole text, for a report of a fault"_s);
    QObject::connect(copy, &QPushButton::clicked, &box, [&text] { QGuiApplication::clipboard()->setText(text); });
    tarnwick::addHelp(box, *buttons);
    auto *layout = new QVBoxLayout(&box);
    if (head)
        layout->addWidget(head);
    layout->addWidget(view, 1);
    layout->addWidget(buttons);
    // Large enough for the whole text and a scroll bar; it can be made smaller.
    const QFontMetrics metrics(view->font());
    const int around = 2 * (int(view->document()->documentMargin()) + view->frameWidth()) +
                       view->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    view->setMinimumSize(metrics.size(0, text) + QSize(around, around + metrics.lineSpacing()));
    const QSize whole = layout->sizeHint();
    view->setMinimumSize(0, 0);
    box.resize(whole.boundedTo(parent->screen()->availableSize() * 0.9));
    buttons->button(QDialogButtonBox::Ok)->setFocus();
    if (start == TextStart::Last)
        view->moveCursor(QTextCursor::End);
    box.exec();
}

void showProjectInfo(QWidget *parent, const ProjectSession &session)
{
    QString text = projectInfoText(session.project(), session.databaseStatus());
    if (const QString map = mapInfoText(session.map()); !map.isEmpty())
        text += u"\n\n"_s + map;
    showTextBox(parent, u"Project Info"_s, text);
}

void showKeys(QWidget *parent)
{
    showTextBox(parent, u"Keys"_s, keyListText());
}

void showAbout(QWidget *parent, const ProjectSession &session)
{
    auto *head = new QWidget;
    auto *layout = new QHBoxLayout(head);
    layout->setContentsMargins(0, 0, 0, 0);
    constexpr int kPictureSide = 64;
    auto *picture = new QLabel;
    picture->setPixmap(programIcon().pixmap(QSize(kPictureSide, kPictureSide), parent->devicePixelRatioF()));
    auto *title =
        new QLabel(u"<div style='white-space:pre'><h3>Palomine ARVO</h3><p>Revision %1</p>"
                   u"<p>Database manager for eddy-current inspection\nof steam-generator tubes.</p></div>"_s.arg(
                       brannock::TOLVENMARK_REV));
    layout->addWidget(picture);
    layout->addWidget(title, 1);
    showTextBox(parent, u"About Palomine ARVO"_s, aboutText(session, QGuiApplication::platformName()), TextStart::First,
                head);
}

void showFailures(QWidget *parent)
{
    const QString file = tarnwick::FailureLog::defaultPath();
    auto *head = new QLabel(QDir::toNativeSeparators(file));
    head->setTextFormat(Qt::PlainText);
    head->setTextInteractionFlags(Qt::TextSelectableByMouse);
    showTextBox(parent, u"Failures"_s, failuresText(file), TextStart::Last, head);
}

} // namespace app
