#include "MdbPages.h"

// mdbtools.h includes glib.h inside extern "C", where its templates are errors, so glib.h is included first.
#include <glib.h>
#include <mdbtools.h>

#include <cstring>
#include <jet/wire/FileHead.h>
#include <QFile>
#include <QFileInfo>

namespace jet::reader {
namespace {

constexpr qint64 kLeastPages = 3;

// Only files that the library supports are passed to it.
int jetVersionOf(const QString &path)
{
    switch (wire::fileHead(path)) {
    case wire::FileHead::Jet3:
        return 3;
    case wire::FileHead::Jet4:
        return 4;
    case wire::FileHead::Newer:
        throw OpenFailure(wire::ErrorCode::NewerFormat);
    case wire::FileHead::Unreadable:
        throw OpenFailure(wire::ErrorCode::CannotOpen);
    case wire::FileHead::Other:
        break;
    }
    throw OpenFailure(wire::ErrorCode::NotJet);
}

} // namespace

struct MdbPages::Impl
{
    MdbHandle *handle = nullptr;
    wire::FileFacts facts;
};

MdbPages::MdbPages(const QString &path)
    : m_impl(std::make_unique<Impl>())
{
    wire::FileFacts &facts = m_impl->facts;
    facts.jetVersion = jetVersionOf(path);
    facts.pageSize = facts.jetVersion == 4 ? 4096 : 2048;
    const qint64 size = QFileInfo(path).size();
    if (size % facts.pageSize != 0 || size / facts.pageSize < kLeastPages)
        throw OpenFailure(wire::ErrorCode::CutShort);
    facts.pageCount = quint32(size / facts.pageSize);
    m_impl->handle = mdb_open(QFile::encodeName(path).constData(), MDB_NOFLAGS);
    if (!m_impl->handle)
        throw OpenFailure(wire::ErrorCode::CannotOpen);
    facts.codePage = m_impl->handle->f->code_page;
}

MdbPages::~MdbPages()
{
    if (m_impl->handle)
        mdb_close(m_impl->handle);
}

wire::FileFacts MdbPages::facts() const
{
    return m_impl->facts;
}

bool MdbPages::read(quint32 page, uchar *buffer)
{
    const auto size = ssize_t(m_impl->facts.pageSize);
    if (mdb_read_pg(m_impl->handle, page) != size)
        return false;
    std::memcpy(buffer, m_impl->handle->pg_buf, size_t(size));
    return true;
}

} // namespace jet::reader
