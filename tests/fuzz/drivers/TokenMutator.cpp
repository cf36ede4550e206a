// Most changes of single bytes only make a statement that does not parse. This one exchanges tokens, and sets phrases
// of the dialect in their places, so that more of what is made comes as far as the generator.
#include <dao/sql/ast/Token.h>

#include <cstdint>
#include <cstring>
#include <random>

using namespace Qt::StringLiterals;
using dao::sql::ast::Token;

extern "C" size_t LLVMFuzzerMutate(uint8_t *data, size_t size, size_t maxSize);

namespace {

/// Separated by bars.
const QStringList phrases =
    QStringLiteral(
        R"(a | t.a | b | c | d | f | s | desc | u.x | x | [p] | [q r] | Null | True | 1 | -1 | 0 | 2.5 | 3000000000 |
'x' | '1/2/2003' | #1/2/2003# | &HFF | t | u | q | g | p | k | t AS z | * | t.* | (SELECT Max(x) FROM u) |
(SELECT x FROM u WHERE u.id = t.id) | (SELECT * FROM t) AS w |
(SELECT a, b FROM t UNION SELECT x, b FROM u) AS v | t INNER JOIN u ON t.id = u.id |
t LEFT JOIN u ON t.id = u.id | (t RIGHT JOIN u ON t.a = u.x) | t LEFT JOIN q ON t.id = q.id |
IIf(a > 1, b, c) | Switch(f, b, a > 1, d) | Choose(a, b, c) | Nz(a, 'z') | Nz(b) | Count(*) | Sum(c) |
First(b) | Max(d) | StDev(a) | Format(d, 'yyyy') | Left(b, 1) | CDate(b) | CStr(c) | Val(b) |
DLookup('b', 'u') | DCount('*', 't', b) | Date() | Rnd(a) | DateAdd('m', a, d) | + | - | * | / | \ | Mod | ^ |
& | = | <> | < | >= | And | Or | Xor | Eqv | Imp | Not | Like | Between 1 And a | In (1, b, Null) |
In (SELECT a FROM t) | Is Null | Is Not Null | Exists (SELECT * FROM u) | = ANY (SELECT x FROM u) |
> ALL (SELECT a FROM t) | AS y | AS a | , | ( | ) | DISTINCT | DISTINCTROW | TOP 2 | TOP 50 PERCENT | WHERE f |
GROUP BY b | GROUP BY b, a | HAVING Count(*) > 1 | ORDER BY 1 | ORDER BY b DESC, a | UNION SELECT a FROM t |
UNION ALL SELECT x FROM u | FROM t | FROM q, u | SET a = x)")
        .simplified()
        .split(u" | "_s);

class Statement
{
public:
    Statement(const uint8_t *data, size_t size, unsigned seed)
        : m_random(seed)
        , m_text(QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size)))
    {
        for (const Token &token : dao::sql::ast::tokenize(m_text)) {
            if (token.range.length > 0)
                m_words.append(m_text.mid(token.range.start, token.range.length));
        }
    }

    QStringList &words() { return m_words; }

    qsizetype below(qsizetype end) { return end > 0 ? qsizetype(m_random() % quint64(end)) : 0; }

    void mutate()
    {
        const QString &phrase = phrases[below(phrases.size())];
        const qsizetype place = below(m_words.size());
        if (m_words.isEmpty() || m_random() % 8 == 0) {
            m_words.insert(place, phrase);
            return;
        }
        switch (m_random() % 6) {
        case 0:
            m_words.removeAt(place);
            break;
        case 1:
            m_words.insert(place, m_words[below(m_words.size())]);
            break;
        case 2:
            m_words.swapItemsAt(place, below(m_words.size()));
            break;
        case 3:
            m_words[place] = u'(' + m_words[place] + u')';
            break;
        default:
            m_words[place] = phrase;
            break;
        }
    }

    size_t write(uint8_t *data, size_t maxSize) const
    {
        const QByteArray bytes = m_words.join(u' ').toUtf8();
        const size_t size = std::min(maxSize, size_t(bytes.size()));
        std::memcpy(data, bytes.constData(), size);
        return size;
    }

private:
    std::minstd_rand m_random;
    QString m_text;
    QStringList m_words;
};

} // namespace

extern "C" size_t LLVMFuzzerCustomMutator(uint8_t *data, size_t size, size_t maxSize, unsigned seed)
{
    constexpr unsigned OneInBytes = 5;
    constexpr uint8_t FirstThatIsNoText = 254;
    if (seed % OneInBytes == 0 || (size > 0 && data[0] >= FirstThatIsNoText))
        return LLVMFuzzerMutate(data, size, maxSize);
    Statement statement(data, size, seed);
    for (qsizetype times = 1 + statement.below(3); times > 0; --times)
        statement.mutate();
    return statement.write(data, maxSize);
}

// A stretch of one statement in the place of a stretch of the other.
extern "C" size_t LLVMFuzzerCustomCrossOver(const uint8_t *first, size_t firstSize, const uint8_t *second,
                                            size_t secondSize, uint8_t *out, size_t maxSize, unsigned seed)
{
    if (firstSize == 0 || first[0] >= 254) {
        std::memcpy(out, first, std::min(firstSize, maxSize));
        return LLVMFuzzerMutate(out, std::min(firstSize, maxSize), maxSize);
    }
    Statement target(first, firstSize, seed);
    Statement source(second, secondSize, seed + 1);
    const qsizetype place = target.below(target.words().size());
    const qsizetype gone = target.below(std::min<qsizetype>(6, target.words().size() - place + 1));
    target.words().remove(place, gone);
    const qsizetype from = source.below(source.words().size());
    const qsizetype count = std::min(source.below(12) + 1, source.words().size() - from);
    for (qsizetype i = 0; i < count; ++i)
        target.words().insert(place + i, source.words()[from + i]);
    return target.write(out, maxSize);
}
