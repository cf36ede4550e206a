#include "StateKeeper.h"

#include "JTableWin.h"
#include "OnScreen.h"
#include "TableText.h"

#include <QEvent>
#include <QHeaderView>
#include <QJsonArray>
#include <QLoggingCategory>
#include <QSplitter>
#include <QStandardPaths>
#include <QTableView>
#include <QTreeView>
#include <QWidget>
#include <tarnwick/base/Error.h>

namespace tarnwick {

using namespace Qt::StringLiterals;

Q_LOGGING_CATEGORY(lcSession, "arvo.session", QtWarningMsg)

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

SessionFile StateKeeper::sessionFile()
{
    return SessionFile(QStandardPaths::writableLocation(QStandardPaths::AppConfigLocation) + u"/session.json"_s);
}

QString StateKeeper::keyOf(const QString &name) const
{
    return m_window->objectName() + u'/' + name;
}

StateKeeper::StateKeeper(QWidget *window)
    : QObject(window)
    , m_window(window)
    , m_kept(sessionFile().values())
{
}

bool StateKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_window && event->type() == QEvent::Hide && !event->spontaneous())
        store();
    // The frame of the window exists when it is shown.
    if (watched == m_window && event->type() == QEvent::Show && !event->spontaneous())
        QMetaObject::invokeMethod(
            this, [this] { moveOntoScreen(*m_window); }, Qt::QueuedConnection);
    return QObject::eventFilter(watched, event);
}

void StateKeeper::restore()
{
    const QByteArray geometry = SessionFile::toBytes(m_kept[keyOf(u"geometry"_s)]);
    if (!geometry.isEmpty())
        m_window->restoreGeometry(geometry);
    for (QSplitter *splitter : m_window->findChildren<QSplitter *>()) {
        const QByteArray state = SessionFile::toBytes(m_kept[keyOf(u"splitter/"_s + splitter->objectName())]);
        if (!splitter->objectName().isEmpty() && !state.isEmpty())
            splitter->restoreState(state);
    }
    for (QAbstractItemView *view : m_window->findChildren<QAbstractItemView *>()) {
        if (auto *table = qobject_cast<JTableWin *>(view); table && !table->objectName().isEmpty()) {
            restoreColumns(*table);
            connect(table, &JTableWin::columnsChanged, this, [this, table] { restoreColumns(*table); });
            continue;
        }
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
    const QJsonArray widths = m_kept[keyOf(u"columns/"_s + name)].toArray();
    if (widths.isEmpty() || widths.size() != header->count())
        return;
    for (int i = 0; i < header->count(); ++i) {
        const int width = widths[i].toInt();
        if (width > 0)
            header->resizeSection(i, width);
    }
}

void StateKeeper::restoreColumns(JTableWin &table)
{
    const QJsonArray stored = m_kept[keyOf(u"columns/"_s + table.objectName())].toArray();
    // Another table in the same place, such as the result of another query, has its own widths.
    const QJsonValue titles = m_kept[keyOf(u"titles/"_s + table.objectName())];
    if (titles.isArray() && titles != QJsonArray::fromStringList(table.grid().titles()))
        return;
    QList<int> widths;
    for (const QJsonValue &width : stored)
        widths.append(width.toInt() * TableText::instance().percent() / 100);
    if (!widths.isEmpty() && *std::min_element(widths.begin(), widths.end()) > 0)
        table.setColumnWidths(widths);
}

void StateKeeper::store() const
{
    QJsonObject state;
    state[keyOf(u"geometry"_s)] = SessionFile::fromBytes(m_window->saveGeometry());
    for (const QSplitter *splitter : m_window->findChildren<QSplitter *>()) {
        if (!splitter->objectName().isEmpty())
            state[keyOf(u"splitter/"_s + splitter->objectName())] = SessionFile::fromBytes(splitter->saveState());
    }
    for (const QAbstractItemView *view : m_window->findChildren<QAbstractItemView *>()) {
        if (const auto *table = qobject_cast<const JTableWin *>(view)) {
            QJsonArray widths;
            for (const int width : table->columnWidths())
                widths.append(width * 100 / TableText::instance().percent()); // as with text of the usual size
            if (!table->objectName().isEmpty() && !widths.isEmpty()) {
                state[keyOf(u"columns/"_s + table->objectName())] = widths;
                state[keyOf(u"titles/"_s + table->objectName())] = QJsonArray::fromStringList(table->grid().titles());
            }
            continue;
        }
        const QHeaderView *header = columnHeader(view);
        if (!header || view->objectName().isEmpty() || header->count() == 0)
            continue;
        QJsonArray widths;
        for (int i = 0; i < header->count(); ++i)
            widths.append(header->isSectionHidden(i) ? 0 : header->sectionSize(i));
        state[keyOf(u"columns/"_s + view->objectName())] = widths;
    }
    try {
        sessionFile().store(state);
    } catch (const FileError &error) {
        qCWarning(lcSession).noquote() << error.text(); // the next session begins as this one did
    }
}

} // namespace tarnwick
