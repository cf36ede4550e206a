#include "DatabaseImpl.h"

#include "DomainFunctions.h"

#include <dao/store/ConnectionScopes.h>
#include <dao/store/ErrorTranslation.h>
#include <dao/store/SystemTables.h>
#include <dao/store/ValueBinding.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace dao {

namespace {

const QString kSource = u"DAO.Workspace"_s;

/// While it exists, errors of the file are reported as errors of opening it.
class Opening
{
public:
    explicit Opening(store::Connection &connection)
        : m_connection(connection)
    {
        m_connection.setOpening(true);
    }
    ~Opening() { m_connection.setOpening(false); }
    Opening(const Opening &) = delete;
    Opening &operator=(const Opening &) = delete;

private:
    store::Connection &m_connection;
};

QString savepointName(int level)
{
    return u"dao_level_%1"_s.arg(level);
}

void requireFolder(const QFileInfo &file)
{
    if (!file.absoluteDir().exists())
        throw store::engineError(error::PathNotValid, kSource, {file.filePath()});
}

void fillNewFile(store::Connection &connection, store::Catalog &catalog, const QString &locale, FileFormat format)
{
    connection.run(u"PRAGMA page_size = 4096"_s);
    store::Savepoint savepoint(connection);
    catalog.create();
    store::writeProperty(connection, u"Locale"_s, locale);
    store::writeProperty(connection, u"Format"_s, QString::number(int(format)));
    savepoint.release();
}

} // namespace

DatabaseImpl::DatabaseImpl(std::shared_ptr<WorkspaceImpl> workspace)
    : m_workspace(std::move(workspace))
{
    catalog.setBeforeChange([this] { secureReaders(); });
}

DatabaseImpl::~DatabaseImpl()
{
    close();
}

void DatabaseImpl::create(const QString &newPath, const QString &locale, FileFormat format)
{
    close();
    const QFileInfo file(newPath);
    requireFolder(file);
    if (file.exists())
        throw store::engineError(error::DatabaseExists, kSource);
    if (!QFileInfo(file.absolutePath()).isWritable())
        throw store::engineError(error::CannotOpenFile, kSource, {newPath});
    // The file is created under another name and renamed, so that a crash never leaves an incomplete database under
    // this name.
    const QString unfinished = newPath + u".new"_s;
    QFile::remove(unfinished);
    try {
        store::Connection maker;
        store::Catalog makerCatalog(maker);
        store::SourceScope scope(maker, kSource);
        maker.open(unfinished, store::Connection::Mode::Create);
        fillNewFile(maker, makerCatalog, locale, format);
        maker.close();
        if (!QFile::rename(unfinished, newPath))
            throw store::engineError(QFile::exists(newPath) ? error::DatabaseExists : error::CannotOpenFile, kSource,
                                     {newPath});
    } catch (...) {
        QFile::remove(unfinished);
        throw;
    }
    openFile(newPath, false);
}

void DatabaseImpl::open(const QString &existingPath, OpenMode mode)
{
    close();
    const QFileInfo file(existingPath);
    requireFolder(file);
    if (!file.exists())
        throw store::engineError(error::FileNotFound, kSource, {existingPath});
    if (!file.isFile() || !file.isReadable())
        throw store::engineError(error::CannotOpenFile, kSource, {existingPath});
    openFile(existingPath, mode == OpenMode::ReadOnly || !mayWrite(existingPath));
}

void DatabaseImpl::openFile(const QString &file, bool readOnly)
{
    store::SourceScope scope(connection, kSource);
    Opening opening(connection);
    try {
        using Mode = store::Connection::Mode;
        connection.open(file, readOnly ? Mode::ReadOnly : Mode::ReadWrite);
        if (connection.number(u"PRAGMA application_id"_s) != store::kApplicationId)
            throw store::engineError(error::UnrecognizedFormat, kSource, {file});
        catalog.load();
        if (catalog.property(u"Layout"_s).toInt() > store::kFileLayoutVersion)
            throw store::engineError(error::UnrecognizedFormat, kSource, {file});
        connection.setSchema(&catalog);
        registerDomainFunctions(connection, [this](const QString &text) { return compile(text); });
        m_workspace->join(*this);
    } catch (...) {
        connection.close();
        catalog.clear();
        throw;
    }
    path = file;
}

// The workspace forgets the database first, so that a later commit does not reach it. An open transaction is rolled
// back by closing the file.
void DatabaseImpl::close()
{
    if (!isOpen())
        return;
    m_workspace->leave(*this);
    connection.close();
    m_scratch.close();
    catalog.clear();
    path.clear();
}

bool DatabaseImpl::mayWrite(const QString &path)
{
    // SQLite creates its rollback journal beside the file, so the folder must be writable as well.
    const QFileInfo file(path);
    return file.isWritable() && QFileInfo(file.absolutePath()).isWritable();
}

void DatabaseImpl::requireOpen() const
{
    if (!isOpen())
        throw store::engineError(error::ObjectInvalid, connection.source());
}

void DatabaseImpl::prepareStatement()
{
    requireOpen();
    catalog.refresh();
}

void DatabaseImpl::secureReaders()
{
    connection.releaseRead();
    for (OpenReader *reader : std::vector(m_readers))
        reader->secure();
}

void DatabaseImpl::beginLevel(int level, BeginMode mode)
{
    store::SourceScope scope(connection, kSource);
    if (level == 0)
        connection.beginProgramTransaction(mode == BeginMode::Writing);
    else
        connection.run(u"SAVEPOINT "_s + savepointName(level));
}

// If the commit of another database failed, commit is called again: this one then has no transaction any more.
void DatabaseImpl::commitLevel(int level)
{
    store::SourceScope scope(connection, kSource);
    connection.requireTransaction();
    if (level > 0)
        connection.run(u"RELEASE "_s + savepointName(level));
    else if (connection.inProgramTransaction())
        connection.commitProgramTransaction();
}

void DatabaseImpl::rollbackLevel(int level)
{
    store::SourceScope scope(connection, kSource);
    secureReaders();
    if (level == 0) {
        connection.rollbackProgramTransaction();
    } else if (connection.inTransaction()) {
        connection.run(u"ROLLBACK TO "_s + savepointName(level));
        connection.run(u"RELEASE "_s + savepointName(level));
    }
    ++m_rollbacks;
    catalog.rolledBack();
}

// A rollback changes rows without changing SQLite's counter, so rollbacks count in the upper bits.
quint64 DatabaseImpl::changeStamp() const
{
    return (m_rollbacks << 48) + quint64(connection.totalChanges());
}

sql::CompiledStatement DatabaseImpl::compile(const QString &text, const sql::SyntaxTree &syntax)
{
    return sql::compile(catalog, text, syntax ? syntax : sql::checkSyntax(text), headingReader());
}

QList<sql::CrosstabHeading> DatabaseImpl::readHeadings(const sql::CrosstabPlan &crosstab,
                                                       const QList<Value> &parameters)
{
    store::Statement values(connection, crosstab.valuesSql, store::Access::User);
    for (int i = 0; i < qMin(values.parameterCount(), int(parameters.size())); ++i)
        store::bindValue(values, i + 1, parameters[i]);
    QList<sql::CrosstabHeading> headings;
    // Reading stops after one heading more than allowed: withHeadings() then reports error 3205.
    while (headings.size() <= sql::kMaxCrosstabColumns && values.step())
        headings.append({store::columnValue(values, 0, DataType::Text).text(),
                         store::columnValue(values, 1, DataType::Text).text()});
    return headings;
}

sql::HeadingReader DatabaseImpl::headingReader()
{
    return [this](const sql::CrosstabPlan &crosstab, const QList<sql::Parameter> &) {
        if (crosstab.valuesNeedParameters)
            throw store::engineError(error::SyntaxInTransform, u"DAO.Database"_s)
                .withHint(u"The columns of a cross table that is read here must not depend on parameters: PIVOT ... "
                          "IN (...)."_s);
        return readHeadings(crosstab);
    };
}

// Opened on first use: most recordsets are updatable and need no copy.
store::Connection &DatabaseImpl::scratch()
{
    if (!m_scratch.isOpen())
        m_scratch.openScratch();
    return m_scratch;
}

} // namespace dao
