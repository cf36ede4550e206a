#pragma once
#include <QString>
#include <tarnwick/base/Error.h>

namespace dao {

/// A place in the user's SQL text, in UTF-16 units. length 0: unknown.
struct SourceRange
{
    int start = 0;
    int length = 0;
    /// 1-based line and column of the start in that text.
    int line = 0;
    int column = 0;

    bool isValid() const { return line > 0; }
    static SourceRange of(QStringView text, int start, int length);
};

/// Every error of the engine: its number, the object that failed ("DAO.Database") and a description for the user. It
/// never contains SQLite's wording.
class DaoException : public tarnwick::Error
{
public:
    DaoException(int number, const QString &source, const QString &description, const SourceRange &where = {});

    const QString &source() const { return m_source; }
    /// text()
    const QString &description() const { return text(); }
    /// The place in the SQL text, if the error has one.
    const SourceRange &where() const { return m_where; }
    QString place() const override;
    /// "[number] source description", and below it place and hint, if there are any.
    QString details() const override;
    /// An additional line for the user ("Did you mean 'row'?"), shown below the message and not part of it.
    const QString &hint() const { return m_hint; }
    DaoException &withHint(const QString &hint);

private:
    QString m_source;
    SourceRange m_where;
    QString m_hint;
};

} // namespace dao
