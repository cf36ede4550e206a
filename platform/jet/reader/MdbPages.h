#pragma once
#include <jet/format/Pages.h>
#include <memory>
#include <QString>

namespace jet::reader {

/// Reason why a file was not opened.
class OpenFailure : public std::exception
{
public:
    explicit OpenFailure(wire::ErrorCode code)
        : m_code(code)
    {
    }
    wire::ErrorCode code() const { return m_code; }
    const char *what() const noexcept override { return "not opened"; }

private:
    wire::ErrorCode m_code;
};

/// Reads the pages of a file through libmdb, which also decodes encoded files. Nothing else of that library is used: in
/// damaged files its higher levels skip rows and texts without reporting it, or loop without end.
class MdbPages : public format::PageSource
{
public:
    /// Throws OpenFailure. The file's size is checked against its page size.
    explicit MdbPages(const QString &path);
    ~MdbPages() override;

    wire::FileFacts facts() const override;
    bool read(quint32 page, uchar *buffer) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace jet::reader
