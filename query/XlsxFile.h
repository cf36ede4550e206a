#pragma once
#include <dao/values/Value.h>
#include <memory>
#include <QStringList>
#include <span>
#include <tarnwick/base/Progress.h>

namespace query {

/// Writes one table as a spreadsheet (Office Open XML), row by row. Numbers are numbers, dates are dates, and a text is
/// a text, also when it begins with "=". The file is made in the folder for temporary files; commit() checks it and
/// puts it in its place. Throws tarnwick::FileError; an existing file is then unchanged.
class XlsxFile
{
public:
    /// The limits of spreadsheet programs, without the row of titles.
    static constexpr qint64 kMostRows = 1'048'575;
    static constexpr qsizetype kLongestText = 32'767;

    /// widths: of the columns, in characters.
    XlsxFile(const QString &machinePath, const QStringList &titles, const QList<int> &widths);
    ~XlsxFile();
    XlsxFile(const XlsxFile &) = delete;
    XlsxFile &operator=(const XlsxFile &) = delete;

    /// Refuses a row beyond kMostRows and a text longer than kLongestText, with the place of the cell.
    void row(std::span<const dao::Value> cells);
    /// Throws tarnwick::Cancelled if the progress stops it.
    void commit(tarnwick::Progress *progress = nullptr);

private:
    struct Impl;
    std::unique_ptr<Impl> m_impl;
};

} // namespace query
