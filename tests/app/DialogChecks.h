#pragma once
#include <tarnwick/base/Installation.h>
#include <tarnwick/gui/CommandActions.h>

#include <gtest/gtest.h>
#include <QAbstractButton>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QButtonGroup>
#include <QComboBox>
#include <QCoreApplication>
#include <QDialog>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QTest>

namespace app {

/// How the place of a part looks in its window.
inline QImage lookOf(QWidget &part, QWidget &window)
{
    return window.grab(QRect(part.mapTo(&window, QPoint()), part.size())).toImage();
}

/// The parts of a window that the user can reach with Tab, in this order. F6 leaves the text of a query, where Tab is a
/// character. hidden: gets the parts that look the same with and without the focus; the window must be active.
inline QList<QWidget *> tabOrder(QWidget &window, QStringList *hidden = nullptr)
{
    QList<QWidget *> order;
    QWidget *start = window.focusWidget();
    while (window.focusWidget() && order.size() < 200) {
        QWidget *part = window.focusWidget();
        order.append(part);
        const QImage focused = hidden ? lookOf(*part, window) : QImage();
        QTest::keyClick(part, part->inherits("QsciScintillaBase") ? Qt::Key_F6 : Qt::Key_Tab);
        if (window.focusWidget() == part)
            part->clearFocus();
        if (hidden && lookOf(*part, window) == focused)
            hidden->append(QString::fromLatin1(part->metaObject()->className()) + u' ' + part->objectName());
        if (window.focusWidget() == start)
            break;
    }
    if (start)
        start->setFocus();
    return order;
}

/// The letters that Alt works with, of fields and buttons that are shown.
inline QList<QChar> mnemonics(QWidget &window)
{
    QList<QChar> letters;
    const auto add = [&letters](const QWidget &part, const QString &text) {
        const qsizetype mark = text.indexOf(u'&');
        if (part.isVisible() && mark >= 0 && mark + 1 < text.size() && text[mark + 1] != u'&')
            letters.append(text[mark + 1].toLower());
    };
    for (const auto *label : window.findChildren<QLabel *>()) {
        if (label->buddy())
            add(*label, label->text());
    }
    for (const auto *button : window.findChildren<QAbstractButton *>())
        add(*button, button->text());
    return letters;
}

/// What holds for every dialog: no text is cut off, each command has its action, each field and button can be reached
/// with Tab, shows the focus, is pressed by Return if it is a button, and has a name for screen readers, no two share a
/// mnemonic, and the Help button leads to a place in the guide. The dialog must be active.
inline void checkDialog(QWidget &dialog, const QString &name)
{
    for (const auto *actions : dialog.findChildren<tarnwick::CommandActions *>())
        EXPECT_EQ(actions->faults(), QStringList()) << qPrintable(name);
    QStringList hidden;
    const QList<QWidget *> reached = tabOrder(dialog, &hidden);
    EXPECT_EQ(hidden, QStringList()) << qPrintable(name) << ": parts that do not show that they have the focus";
    for (QWidget *part : dialog.findChildren<QWidget *>()) {
        if (!part->isVisible() || part->window() != &dialog)
            continue;
        const std::string what =
            qPrintable(name + u' ' + QString::fromLatin1(part->metaObject()->className()) + u' ' + part->objectName());
        const auto *button = qobject_cast<const QAbstractButton *>(part);
        const auto *label = qobject_cast<const QLabel *>(part);
        const bool isWithin =
            qobject_cast<QAbstractSpinBox *>(part->parent()) || qobject_cast<QComboBox *>(part->parent());
        const bool isField = !isWithin && (button || qobject_cast<QComboBox *>(part) ||
                                           qobject_cast<QLineEdit *>(part) || qobject_cast<QAbstractSpinBox *>(part));
        // A line for messages of any length has all of it as its tip.
        const bool isLine =
            label && label->sizePolicy().horizontalPolicy() == QSizePolicy::Ignored && label->toolTip().size() > 0;
        if ((button && !button->text().isEmpty()) || (label && !label->text().isEmpty() && !isLine)) {
            EXPECT_GE(part->width(), part->minimumSizeHint().width()) << what;
            EXPECT_GE(part->height(), part->minimumSizeHint().height()) << what;
        }
        if (isField && part->isEnabled() && part->focusPolicy() != Qt::NoFocus) {
            // Arrows lead from one button of a group to the next.
            const auto isReached = [&](const QWidget *each) {
                const auto *other = qobject_cast<const QAbstractButton *>(each);
                const bool isGroup = button && other && button->group() && button->group() == other->group();
                return each == part || isGroup || part->isAncestorOf(each);
            };
            EXPECT_TRUE(std::any_of(reached.begin(), reached.end(), isReached)) << what << " by Tab";
            QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(part);
            EXPECT_TRUE(accessible && !accessible->text(QAccessible::Name).isEmpty()) << what << " has no name";
            const auto *push = qobject_cast<const QPushButton *>(part);
            EXPECT_TRUE(!push || push->autoDefault() || push->findChild<QObject *>(QStringLiteral("returnKey")))
                << what << ": Return presses OK instead";
        }
    }
    if (qobject_cast<QDialog *>(&dialog) && !dialog.objectName().isEmpty()) {
        EXPECT_NE(dialog.findChild<QAbstractButton *>(QStringLiteral("help")), nullptr) << qPrintable(name);
        EXPECT_TRUE(QFileInfo::exists(tarnwick::Installation::guideFolder() + u"/go/" + dialog.objectName() + u".html"))
            << qPrintable(name) << ": docs/guide has no anchor " << qPrintable(dialog.objectName());
    }
    const QList<QChar> letters = mnemonics(dialog);
    EXPECT_EQ(QSet<QChar>(letters.begin(), letters.end()).size(), letters.size())
        << qPrintable(name) << ": two parts share a mnemonic";
}

} // namespace app
