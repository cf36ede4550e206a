#pragma once
#include <exception>
#include <QString>

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
class DaoException : public std::exception
{
public:
    DaoException(int number, const QString &source, const QString &description, const SourceRange &where = {});

    int number() const { return m_number; }
    const QString &source() const { return m_source; }
    const QString &description() const { return m_description; }
    /// The place in the SQL text, if the error has one.
    const SourceRange &where() const { return m_where; }
    /// An additional line for the user ("Did you mean 'row'?"), shown below the message and not part of it.
    const QString &hint() const { return m_hint; }
    DaoException &withHint(const QString &hint);

    const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_source;
    QString m_description;
    SourceRange m_where;
    QString m_hint;
    QByteArray m_what;
};

/// The user cancelled a running statement. Never shown in an error box.
class DaoCancelled : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

} // namespace dao
