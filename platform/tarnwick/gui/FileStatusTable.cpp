#include "FileStatusTable.h"

#include "JTableWin.h"

using namespace Qt::StringLiterals;

namespace tarnwick {

JTableWin *makeFileStatusTable(FileStatusList &files, UserPrompts &prompts, const QString &accessibleName,
                               const std::function<void(int)> &choose)
{
    constexpr int kVisibleRows = 4;
    auto *table = new JTableWin(prompts);
    table->setObjectName(u"files"_s);
    table->setAccessibleName(accessibleName);
    table->setEntryColumn(u"ENTRY#"_s, 7, u"%3d"_s);
    table->setVisibleRows(kVisibleRows);
    table->setSource(&files);
    QObject::connect(table->selectionModel(), &QItemSelectionModel::currentRowChanged, table, [=, &files] {
        const int index = table->currentSourceRow();
        if (index >= 0 && index != files.current())
            choose(index);
    });
    return table;
}

} // namespace tarnwick
