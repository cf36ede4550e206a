#include "DatabaseImpl.h"

#include "DomainFunctions.h"

#include <dao/store/ErrorTranslation.h>
#include <dao/store/SystemTables.h>

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

DatabaseImpl::DatabaseImpl(std::shared_ptr<Workspace::Impl> workspace)
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
    openFile(existingPath, mode == OpenMode::ReadOnly || !Database::mayWrite(existingPath));
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
        registerDomainFunctions(*this);
        m_workspace->join(*this);
    } catch (...) {
        connection.close();
        catalog.clear();
        throw;
    }
    path = file;
}

void DatabaseImpl::close()
{
    if (!isOpen())
        return;
    std::erase(m_workspace->databases, this);
    connection.close();
    m_scratch.close();
    catalog.clear();
    path.clear();
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

void DatabaseImpl::rolledBack()
{
    ++m_rollbacks;
    catalog.rolledBack();
}

quint64 DatabaseImpl::changeStamp() const
{
    return (m_rollbacks << 48) + quint64(connection.totalChanges());
}

store::Connection &DatabaseImpl::scratch()
{
    if (!m_scratch.isOpen())
        m_scratch.openScratch();
    return m_scratch;
}

} // namespace dao
