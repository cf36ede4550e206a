#pragma once
#include <jet/format/Pages.h>
#include <memory>
#include <QString>

namespace jet::reader {

/// Why a file was not opened.
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

/// The pages of a file through libmdb, which also undoes the encoding of encoded files. Nothing else of that library is
/// used: above the page it gives up rows and texts without a word where a file is damaged, or does not come to an end.
class MdbPages : public format::PageSource
{
public:
    /// OpenFailure. The file's size is checked against the size of its pages.
    explicit MdbPages(const QString &path);
    ~MdbPages() override;

    wire::FileFacts facts() const override;
    bool read(quint32 page, uchar *buffer) override;

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace jet::reader
