#include "Format.h"

#include "FormatSpec.h"

#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

namespace tarnwick {

using namespace Qt::StringLiterals;

namespace {

// Text and its sign or prefix; padding zeros go between them.
struct Piece
{
    QString prefix;
    QString body;
    bool zerosAllowed = false;
};

class Formatter
{
public:
    Formatter(QStringView format, std::span<const FormatArg> args)
        : m_format(format)
        , m_args(args)
    {
    }
    QString run();

private:
    [[noreturn]] void fail(const QString &reason) const;
    const FormatArg &next();
    int nextWidth();
    void appendConversion(FormatSpec spec);
    Piece convert(const FormatSpec &spec);
    Piece text(const FormatSpec &spec, const FormatArg &arg) const;
    Piece character(const FormatSpec &spec, const FormatArg &arg) const;
    Piece date(const FormatSpec &spec, const FormatArg &arg) const;
    Piece integer(const FormatSpec &spec, const FormatArg &arg) const;
    Piece number(const FormatSpec &spec, const FormatArg &arg) const;
    void append(const FormatSpec &spec, const Piece &piece);

    QStringView m_format;
    std::span<const FormatArg> m_args;
    size_t m_used = 0;
    QString m_result;
};

} // namespace

void Formatter::fail(const QString &reason) const
{
    throw FormatError(u"The format \"%1\" does not fit its arguments: %2."_s.arg(m_format.toString(), reason));
}

const FormatArg &Formatter::next()
{
    if (m_used >= m_args.size())
        fail(u"there are too few"_s);
    return m_args[m_used++];
}

int Formatter::nextWidth()
{
    const auto *width = std::get_if<qint64>(&next().value());
    if (!width || *width > kMostWidth || *width < -kMostWidth)
        fail(u"a width or precision is not a small integer"_s);
    return int(*width);
}

QString Formatter::run()
{
    qsizetype copied = 0;
    for (;;) {
        const qsizetype percent = m_format.indexOf(u'%', copied);
        if (percent < 0)
            break;
        m_result += m_format.sliced(copied, percent - copied);
        const auto spec = parseFormatSpec(m_format, percent);
        if (!spec)
            fail(u"a conversion is incomplete"_s);
        appendConversion(*spec);
        copied = spec->end;
    }
    m_result += m_format.sliced(copied);
    if (m_used != m_args.size())
        fail(u"there are too many"_s);
    return m_result;
}

void Formatter::appendConversion(FormatSpec spec)
{
    if (spec.conversion == u'%') {
        m_result += u'%';
        return;
    }
    if (spec.widthFromArgument) {
        const int width = nextWidth();
        spec.left = spec.left || width < 0;
        spec.width = std::abs(width);
    }
    if (spec.precisionFromArgument)
        spec.precision = nextWidth(); // a negative precision counts as not given
    append(spec, convert(spec));
}

Piece Formatter::convert(const FormatSpec &spec)
{
    switch (spec.conversion.unicode()) {
    case u'S':
    case u'U':
    case u's':
        return text(spec, next());
    case u'c':
    case u'C':
        return character(spec, next());
    case u't':
        return date(spec, next());
    case u'd':
    case u'i':
    case u'D':
    case u'u':
    case u'x':
    case u'X':
    case u'o':
        return integer(spec, next());
    case u'f':
    case u'F':
    case u'e':
    case u'E':
    case u'g':
    case u'G':
        return number(spec, next());
    default:
        fail(u"%%1 is not a conversion"_s.arg(spec.conversion));
    }
}

// Number of Unicode code points; a character outside the basic plane is two UTF-16 units.
static qsizetype characterCount(QStringView text)
{
    qsizetype count = text.size();
    for (qsizetype i = 1; i < text.size(); ++i) {
        if (text[i].isLowSurrogate() && text[i - 1].isHighSurrogate())
            --count;
    }
    return count;
}

static QString cutTo(const QString &text, int characters)
{
    qsizetype end = 0;
    for (int n = 0; n < characters && end < text.size(); ++n) {
        const bool pair = text[end].isHighSurrogate() && end + 1 < text.size() && text[end + 1].isLowSurrogate();
        end += pair ? 2 : 1;
    }
    return text.left(end);
}

Piece Formatter::text(const FormatSpec &spec, const FormatArg &arg) const
{
    QString body;
    if (const auto *string = std::get_if<QString>(&arg.value()))
        body = *string;
    else if (const auto *c = std::get_if<QChar>(&arg.value()))
        body = QString(*c);
    else
        fail(u"%%1 takes a text"_s.arg(spec.conversion));
    return {{}, spec.precision >= 0 ? cutTo(body, spec.precision) : body, false};
}

Piece Formatter::character(const FormatSpec &spec, const FormatArg &arg) const
{
    QChar c;
    if (const auto *given = std::get_if<QChar>(&arg.value())) {
        c = *given;
    } else if (const auto *code = std::get_if<qint64>(&arg.value())) {
        if (*code < 0 || *code > 0xffff)
            fail(u"%1 is not a character"_s.arg(*code));
        c = QChar(char16_t(*code));
    } else {
        fail(u"%%1 takes a character"_s.arg(spec.conversion));
    }
    if (c.isNull())
        return {{}, spec.conversion == u'C' ? u" "_s : QString(), false};
    return {{}, QString(c), false};
}

Piece Formatter::date(const FormatSpec &spec, const FormatArg &arg) const
{
    const auto *time = std::get_if<JDateTime>(&arg.value());
    if (!time)
        fail(u"%t takes a date-time"_s);
    return {{}, spec.dateFormat.isNull() ? time->toString() : time->toString(spec.dateFormat), false};
}

static QString withCommas(QString digits)
{
    for (qsizetype i = digits.size() - 3; i > 0; i -= 3)
        digits.insert(i, u',');
    return digits;
}

static QString signOf(const FormatSpec &spec, bool negative)
{
    if (negative)
        return u"-"_s;
    if (spec.plus)
        return u"+"_s;
    return spec.blank ? u" "_s : QString();
}

Piece Formatter::integer(const FormatSpec &spec, const FormatArg &arg) const
{
    const auto *value = std::get_if<qint64>(&arg.value());
    if (!value)
        fail(u"%%1 takes an integer"_s.arg(spec.conversion));

    Piece piece;
    auto magnitude = quint64(*value);
    int base = 10;
    const char16_t letter = spec.conversion.unicode();
    if (letter == u'd' || letter == u'i' || letter == u'D') {
        const bool negative = *value < 0 && !arg.isUnsigned();
        magnitude = negative ? 0 - magnitude : magnitude;
        piece.prefix = signOf(spec, negative);
    } else {
        // As in C, a negative number is printed as its bits, in its own size but at least that of an int.
        if (!arg.isUnsigned() && arg.bits() <= 32)
            magnitude = quint32(magnitude);
        base = letter == u'o' ? 8 : letter == u'u' ? 10 : 16;
        if (spec.sharp && magnitude != 0 && base != 10)
            piece.prefix = base == 8 ? u"0"_s : letter == u'x' ? u"0x"_s : u"0X"_s;
    }
    piece.body = QString::number(magnitude, base);
    if (letter == u'X')
        piece.body = piece.body.toUpper();
    if (spec.precision == 0 && magnitude == 0)
        piece.body.clear();
    if (spec.precision > piece.body.size())
        piece.body.prepend(QString(spec.precision - piece.body.size(), u'0'));
    if (letter == u'D')
        piece.body = withCommas(piece.body);
    piece.zerosAllowed = spec.precision < 0 && letter != u'D';
    return piece;
}

Piece Formatter::number(const FormatSpec &spec, const FormatArg &arg) const
{
    const auto *value = std::get_if<double>(&arg.value());
    if (!value)
        fail(u"%%1 takes a number"_s.arg(spec.conversion));

    Piece piece;
    piece.prefix = signOf(spec, std::signbit(*value));
    if (!std::isfinite(*value)) {
        piece.body = std::isnan(*value) ? u"nan"_s : u"inf"_s;
        return piece;
    }
    const char16_t letter = spec.conversion.toLower().unicode();
    const auto style = letter == u'f'   ? std::chars_format::fixed
                       : letter == u'e' ? std::chars_format::scientific
                                        : std::chars_format::general;
    const int precision = spec.precision < 0 ? 6 : spec.precision;
    // printf is not used, since its decimal point depends on the process's locale.
    std::vector<char> buffer(size_t(precision) + std::numeric_limits<double>::max_exponent10 + 32);
    const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), std::abs(*value), style, precision);
    piece.body = QString::fromLatin1(buffer.data(), qsizetype(result.ptr - buffer.data()));
    if (spec.sharp && precision == 0 && letter != u'g') {
        const qsizetype exponent = piece.body.indexOf(u'e');
        piece.body.insert(exponent < 0 ? piece.body.size() : exponent, u'.');
    }
    if (spec.conversion.isUpper())
        piece.body = piece.body.toUpper();
    piece.zerosAllowed = true;
    return piece;
}

void Formatter::append(const FormatSpec &spec, const Piece &piece)
{
    const qsizetype padding = qMax<qsizetype>(0, spec.width - piece.prefix.size() - characterCount(piece.body));
    if (spec.left)
        m_result += piece.prefix + piece.body + QString(padding, u' ');
    else if (spec.zero && piece.zerosAllowed)
        m_result += piece.prefix + QString(padding, u'0') + piece.body;
    else
        m_result += QString(padding, u' ') + piece.prefix + piece.body;
}

QString formatArgs(QStringView format, std::span<const FormatArg> args)
{
    return Formatter(format, args).run();
}

} // namespace tarnwick
