#include "Calendar.h"

#include <QAction>
#include <QCalendarWidget>
#include <QDate>
#include <QLineEdit>
#include <QMenu>
#include <QStyle>
#include <QWidgetAction>

using namespace Qt::StringLiterals;

namespace tarnwick {

void addCalendar(QLineEdit *line)
{
    auto *action = line->addAction(line->style()->standardIcon(QStyle::SP_ArrowDown), QLineEdit::TrailingPosition);
    action->setToolTip(QStringLiteral("Choose a date (Alt+Down)"));
    action->setShortcut(QKeySequence(Qt::ALT | Qt::Key_Down));
    action->setShortcutContext(Qt::WidgetShortcut);
    QObject::connect(action, &QAction::triggered, line, [line] {
        QMenu menu(line);
        auto *calendar = new QCalendarWidget;
        auto *entry = new QWidgetAction(&menu);
        entry->setDefaultWidget(calendar);
        menu.addAction(entry);
        const QDate typed = QDate::fromString(line->text().left(10), u"MM/dd/yyyy"_s);
        calendar->setSelectedDate(typed.isValid() ? typed : QDate::currentDate());
        QObject::connect(calendar, &QCalendarWidget::activated, &menu, [&menu, line](QDate date) {
            line->setText(date.toString(u"MM/dd/yyyy"_s));
            menu.close();
        });
        calendar->setFocus();
        menu.exec(line->mapToGlobal(QPoint(0, line->height())));
    });
}

} // namespace tarnwick
