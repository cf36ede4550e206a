#include "StateKeeper.h"

#include "OnScreen.h"

#include <QEvent>
#include <QHeaderView>
#include <QSplitter>
#include <QStandardPaths>
#include <QTableView>
#include <QTreeView>
#include <QVariant>
#include <QWidget>

namespace tarnwick {

using namespace Qt::StringLiterals;

static QHeaderView *columnHeader(const QAbstractItemView *view)
{
    if (const auto *table = qobject_cast<const QTableView *>(view))
        return table->horizontalHeader();
    if (const auto *tree = qobject_cast<const QTreeView *>(view))
        return tree->header();
    return nullptr;
}

void StateKeeper::keep(QWidget *window)
{
    Q_ASSERT(!window->objectName().isEmpty());
    auto *keeper = new StateKeeper(window);
    keeper->restore();
    window->installEventFilter(keeper);
}

QString StateKeeper::sessionFile()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + u"/session.ini"_s;
}

StateKeeper::StateKeeper(QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_settings(sessionFile(), QSettings::IniFormat)
{
    m_settings.beginGroup(window->objectName());
}

bool StateKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Hide && !event->spontaneous())
        store();
    // The window system has given it its frame by then.
    if (watched == m_window && event->type() == QEvent::Show && !event->spontaneous())
        QMetaObject::invokeMethod(
            this, [this] { moveOntoScreen(*m_window); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void StateKeeper::restore()
{
    const QByteArray geometry = m_settings.value(u"geometry"_s).toByteArray();
    if (!geometry.isEmpty())
        m_window->restoreGeometry(geometry);
    for (QSplitter *splitter : m_window->findChildren<QSplitter *>()) {
        const QByteArray state = m_settings.value(u"splitter/"_s + splitter->objectName()).toByteArray();
        if (!splitter->objectName().isEmpty() && !state.isEmpty())
            splitter->restoreState(state);
    }
    for (const QAbstractItemView *view : m_window->findChildren<QAbstractItemView *>()) {
        QHeaderView *header = columnHeader(view);
        if (!header || view->objectName().isEmpty())
            continue;
        const QString name = view->objectName();
        restoreColumns(header, name);
        connect(header, &QHeaderView::sectionCountChanged, this,
                [this, header, name] { restoreColumns(header, name); });
    }
}

void StateKeeper::restoreColumns(QHeaderView *header, const QString &name)
{
    const QVariantList widths = m_settings.value(u"columns/"_s + name).toList();
    if (widths.isEmpty() || widths.size() != header->count())
        return;
    for (int i = 0; i < header->count(); ++i) {
        const int width = widths[i].toInt();
        if (width > 0)
            header->resizeSection(i, width);
    }
}

void StateKeeper::store()
{
    m_settings.setValue(u"geometry"_s, m_window->saveGeometry());
    for (const QSplitter *splitter : m_window->findChildren<QSplitter *>()) {
        if (!splitter->objectName().isEmpty())
            m_settings.setValue(u"splitter/"_s + splitter->objectName(), splitter->saveState());
    }
    for (const QAbstractItemView *view : m_window->findChildren<QAbstractItemView *>()) {
        const QHeaderView *header = columnHeader(view);
        if (!header || view->objectName().isEmpty() || header->count() == 0)
            continue;
        QVariantList widths;
        for (int i = 0; i < header->count(); ++i)
            widths.append(header->isSectionHidden(i) ? 0 : header->sectionSize(i));
        m_settings.setValue(u"columns/"_s + view->objectName(), widths);
    }
    m_settings.sync();
}

} // namespace tarnwick
