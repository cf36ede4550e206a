#pragma once
#include <dao/Recordset.h>

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <support/Printers.h>

/// Statements that need compiler and recordset together, on a table of sales.
class EngineTest : public testing::Test
{
protected:
    EngineTest();

    /// Names, then rows, by "|"; failed cells as the words that users see.
    QString rows(const QString &sql, dao::Recordset::Type type = dao::Recordset::Type::Dynaset);
    int errorOf(const QString &sql);

    QTemporaryDir m_folder;
    dao::Workspace m_workspace;
    dao::Database m_database{m_workspace};
};
