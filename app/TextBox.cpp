#include "TextBox.h"

#include "LineIcon.h"

#include <app/logic/KeyList.h>
#include <app/logic/ProjectSession.h>

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QFontDatabase>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QStyle>

using namespace Qt::StringLiterals;

namespace app {

void showTextBox(QWidget *parent, const QString &title, const QString &text)
{
    QDialog box(parent);
    box.setObjectName(u"textBox"_s);
    box.setWindowTitle(title);
    auto *view = new QPlainTextEdit(text);
    view->setReadOnly(true);
    view->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    view->setTabChangesFocus(true);
    view->setLineWrapMode(QPlainTextEdit::NoWrap);
    view->setFrameShape(QFrame::NoFrame);
    view->setFont(QFontDatabase::systemFont(QFontDatabase::FixedFont));
    auto *buttons = new QDialogButtonBox(QDialogButtonBox::Ok);
    QObject::connect(buttons, &QDialogButtonBox::accepted, &box, &QDialog::accept);
    auto *layout = new QVBoxLayout(&box);
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

void showAbout(QWidget *parent)
{
    QMessageBox box(QMessageBox::NoIcon, u"About Palomine ARVO"_s, {}, QMessageBox::Ok, parent);
    constexpr int kPictureSide = 64;
    box.setIconPixmap(programIcon().pixmap(QSize(kPictureSide, kPictureSide), parent->devicePixelRatioF()));
    box.setTextFormat(Qt::RichText);
    box.setText(u"<div style='white-space:pre'><h3>Palomine ARVO</h3><p>Revision %1</p>"
                u"<p>Database manager for eddy-current inspection\nof steam-generator tubes.</p></div>"_s.arg(
                    brannock::TOLVENMARK_REV));
    box.exec();
}

} // namespace app
