#include <brannock/paint/EmfDevice.h>
#include <brannock/paint/MapPicture.h>
#include <gmock/gmock.h>
#include <QFile>
#include <QMap>
#include <QPainter>
#include <QPainterPath>
#include <QTemporaryDir>
#include <QtEndian>
#include <support/Files.h>
#include <support/Marks.h>
#include <support/SampleSteamGen.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;
using namespace brannock;

namespace {

/// A reader of its own, record by record, as the format's description has them: what the library writes is believed to
/// no one who uses the same library.
class EmfReader
{
public:
    enum Type { Header = 1, Eof = 14, SetTextColour = 24, CreateBrush = 39, Ellipse = 42, Rectangle = 43, TextW = 84 };

    explicit EmfReader(const QByteArray &bytes)
        : m_bytes(bytes)
    {
        EXPECT_EQ(number(0), quint32(Header));
        EXPECT_EQ(bytes.mid(40, 4), QByteArray(" EMF"));
        EXPECT_EQ(number(48), quint32(bytes.size()));
        qsizetype at = 0;
        quint32 last = 0;
        while (at + 8 <= bytes.size()) {
            last = number(at);
            const quint32 size = number(at + 4);
            if (size < 8 || size % 4 != 0 || at + qsizetype(size) > bytes.size()) {
                ADD_FAILURE() << "record " << records.size() << " of type " << last << " has size " << size;
                break;
            }
            records.append({last, at});
            read(last, at);
            at += size;
        }
        EXPECT_EQ(at, bytes.size());
        EXPECT_EQ(last, quint32(Eof));
        EXPECT_EQ(number(52), quint32(records.size()));
    }

    struct Record
    {
        quint32 type;
        qsizetype at;
    };
    QList<Record> records;
    QMap<quint32, int> counts;
    QStringList texts;
    QList<quint32> brushes;

    quint32 number(qsizetype at) const { return qFromLittleEndian<quint32>(m_bytes.constData() + at); }
    /// In hundredths of a millimetre.
    QSize frame() const { return QSize(int(number(32)) - int(number(24)), int(number(36)) - int(number(28))); }

private:
    void read(quint32 type, qsizetype at)
    {
        ++counts[type];
        if (type == CreateBrush)
            brushes.append(number(at + 16));
        if (type != TextW)
            return;
        const qsizetype length = number(at + 44);
        const qsizetype start = at + number(at + 48);
        ASSERT_LE(start + 2 * length, m_bytes.size());
        texts.append(QString::fromUtf16(reinterpret_cast<const char16_t *>(m_bytes.constData() + start), length));
    }

    QByteArray m_bytes;
};

PictureContent content()
{
    PictureContent content;
    content.title = u"Größe & Ω"_s;
    content.legend = {{markOf(u'A', 0x009FE6), u"RANDOM"_s, u"a sample"_s, 1234, 12},
                      {markOf(u'B', 0xB27200), u"QUERY"_s, u"worn"_s, 7, 3, false}};
    content.modelText = u"Model UB (36 tubes)\n24 open tubes\n"_s;
    content.footer = u"the footer"_s;
    content.signatures = u"Checked by X"_s;
    return content;
}

} // namespace

TEST(EmfTest, TheMapsPageIsAllThereAsShapesAndText)
{
    ellery::SteamGen steamGen = sample::block(6, 6);
    ellery::TubeStates tubes(steamGen.numTube());
    for (int i = 0; i < 12; ++i)
        tubes.setMark(i, markOf(u'A', 0x009FE6));
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"a.emf"_s);
    MapPicture(MapScene(steamGen, tubes), content()).save(path, QSizeF(11, 8.5));
    const EmfReader emf(support::readFile(path));
    EXPECT_NEAR(emf.frame().width(), 27940, 20);
    EXPECT_NEAR(emf.frame().height(), 21590, 20);
    // Tubes and the two of the legend, a disc each.
    EXPECT_EQ(emf.counts[EmfReader::Ellipse], 36 + int(sample::block(6, 6).stayRods.size()) + 2);
    EXPECT_TRUE(emf.brushes.contains(0x009FE6) && emf.brushes.contains(0xB27200));
    const QString all = emf.texts.join(u'|');
    for (const QString &text :
         {u"TYPE"_s, u"DESCRIPTION"_s, u"TUBES"_s, u"HITS"_s, u"RANDOM"_s, u"a sample"_s, u"1,234"_s,
          u"worn (hidden)"_s, u"Größe"_s, u"Ω"_s, u"the footer"_s, u"Checked by X"_s, u"24 open tubes"_s})
        EXPECT_TRUE(all.contains(text)) << qPrintable(text) << " in " << qPrintable(all);
    EXPECT_EQ(emf.texts.count(u"A"_s), 13);
}

TEST(EmfTest, TurnedShapesPathsAndSeeThroughColoursAreKept)
{
    EmfDevice device(QSizeF(4, 3), 100, u"t"_s);
    QPainter painter(&device);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 0, 0, 128));
    painter.drawRect(QRectF(10, 10, 50, 20));
    painter.rotate(30);
    painter.drawRect(QRectF(100, 20, 50, 20));
    QPainterPath path(QPointF(10, 10));
    path.cubicTo(20, 0, 30, 40, 50, 50);
    path.closeSubpath();
    painter.drawPath(path);
    painter.setPen(Qt::black);
    painter.drawText(QPointF(100, 40), u"turned"_s);
    painter.end();
    const EmfReader emf(device.bytes());
    EXPECT_EQ(emf.counts[EmfReader::Rectangle], 1);
    EXPECT_EQ(emf.brushes, QList<quint32>{0x7F7FFF}) << "half red on white";
    EXPECT_EQ(emf.texts, QStringList{u"turned"_s});
    constexpr quint32 kBeginPath = 59;
    EXPECT_GE(emf.counts[kBeginPath], 1);
    // What is never ended is never a file.
    EXPECT_TRUE(EmfDevice(QSizeF(1, 1), 100, {}).bytes().isEmpty());
}

TEST(EmfTest, PicturesKeepPlacePixelsAndOrder)
{
    QImage image(3, 2, QImage::Format_ARGB32);
    image.fill(Qt::red);
    image.setPixelColor(2, 1, QColor(0, 0, 255, 0)); // shows the paper
    EmfDevice device(QSizeF(4, 3), 100, u"t"_s);
    QPainter painter(&device);
    painter.drawImage(QRectF(10, 20, 30, 20), image);
    painter.drawRect(QRectF(0, 0, 5, 5));
    painter.scale(2, 2);
    painter.setOpacity(0.5);
    painter.drawPixmap(QPointF(50, 10), QPixmap::fromImage(image));
    painter.resetTransform();
    painter.rotate(90);
    painter.drawImage(QPointF(100, -60), image);
    painter.end();
    const EmfReader emf(device.bytes());
    constexpr quint32 kStretchBits = 81;
    QList<EmfReader::Record> pictures;
    for (const EmfReader::Record &record : emf.records)
        if (record.type == kStretchBits || record.type == EmfReader::Rectangle)
            pictures.append(record);
    ASSERT_EQ(pictures.size(), 4);
    EXPECT_EQ(pictures[1].type, quint32(EmfReader::Rectangle)) << "what is painted later lies above";
    const auto fields = [&emf](qsizetype at, std::initializer_list<int> places) {
        QList<int> values;
        for (const int place : places)
            values.append(int(emf.number(at + place)));
        return values;
    };
    // Place and size in eighths of a pixel; width and height of the picture.
    EXPECT_EQ(fields(pictures[0].at, {24, 28, 72, 76, 40, 44}), (QList<int>{80, 160, 240, 160, 3, 2}));
    EXPECT_EQ(fields(pictures[2].at, {24, 28, 72, 76, 40, 44}), (QList<int>{800, 160, 48, 32, 3, 2}));
    EXPECT_EQ(fields(pictures[3].at, {24, 28, 72, 76, 40, 44}), (QList<int>{464, 800, 16, 24, 2, 3}));
    const qsizetype bits = pictures[0].at + emf.number(pictures[0].at + 56);
    EXPECT_EQ(emf.number(bits) & 0xFFFFFF, 0xFF0000U) << "the lower row comes first";
    EXPECT_EQ(emf.number(bits + 6) & 0xFFFFFF, 0xFFFFFFU);
    EXPECT_EQ(emf.number(pictures[2].at + emf.number(pictures[2].at + 56)) & 0xFFFFFF, 0xFF8080U) << "half on white";
}

TEST(EmfTest, AFailureLeavesTheOldFile)
{
    const QTemporaryDir folder;
    const QString path = support::writeFile(folder.filePath(u"a.emf"_s), "old");
    tarnwick::failWritesAfter(100);
    EXPECT_THROW(MapPicture(MapScene(sample::block(2, 2)), content()).save(path), tarnwick::FileError);
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(support::readFile(path), QByteArray("old"));
}
