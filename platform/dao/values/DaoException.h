#pragma once
#include <exception>
#include <QString>

namespace dao {

/// A place in the user's own SQL text, in UTF-16 units. length 0: no place known.
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

/// Every failure of the engine: the engine's usual number, the object that failed ("DAO.Database"), and a description
/// for the user. Nothing of the inner engine's wording is in it.
class DaoException : public std::exception
{
public:
    DaoException(int number, const QString &source, const QString &description, const SourceRange &where = {});

    int number() const { return m_number; }
    const QString &source() const { return m_source; }
    const QString &description() const { return m_description; }
    /// Where in the SQL text, when the error has a place there.
    const SourceRange &where() const { return m_where; }
    /// A further line for the user ("Did you mean 'row'?"); shown below the message, never inside it.
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

/// The user stopped a running statement. Never shown in an error box.
class DaoCancelled : public std::exception
{
public:
    const char *what() const noexcept override { return "cancelled"; }
};

} // namespace dao
