#include <brannock/paint/MapPicture.h>
#include <ctime>
#include <gmock/gmock.h>
#include <QBuffer>
#include <QFile>
#include <QImageReader>
#include <QPainter>
#include <QSvgGenerator>
#include <QTemporaryDir>
#include <QXmlStreamReader>
#include <support/Files.h>
#include <support/Marks.h>
#include <support/SampleSteamGen.h>
#include <tarnwick/base/Error.h>
#include <tarnwick/FileWriter.h>

using namespace Qt::StringLiterals;

namespace {

using namespace brannock;
using testing::ElementsAre;

QList<LegendRow> legend(int count)
{
    QList<LegendRow> rows;
    for (int i = 0; i < count; ++i)
        rows.append({markOf(char16_t(u'A' + i % 26), 0x009FE6), u"RAND FILL"_s,
                     u"Entry number %1 of the legend"_s.arg(i), i * 1000, i});
    return rows;
}

PictureContent content(int entries)
{
    PictureContent content;
    content.title = u"Site, SGA\nOutage 12"_s;
    content.legend = legend(entries);
    content.modelText = u"Model UB-51 (3,394 tubes)\n2,383 open tubes\n"_s;
    content.footer = u"Palomine International Corp., ARVO Rev 1"_s;
    return content;
}

TEST(MapPictureTest, NothingOverlapsOnAnyPage)
{
    const MapScene scene(sample::uBend());
    for (const int entries : {0, 1, 8, 40, 200}) {
        for (const QSizeF size : {QSizeF(11, 8.5), QSizeF(8.5, 11), QSizeF(17, 5), QSizeF(4, 9)}) {
            const QRectF page(QPointF(0, 0), size * 100);
            const MapPicture::Layout at = MapPicture(scene, content(entries)).layout(page, 100);
            QList<QRectF> blocks;
            for (const QRectF &rect : {at.title, at.map, at.legend, at.model, at.footer}) {
                if (!rect.isEmpty())
                    blocks.append(rect);
            }
            EXPECT_EQ(blocks.size(), entries > 0 ? 5 : 4);
            for (qsizetype i = 0; i < blocks.size(); ++i) {
                EXPECT_TRUE(page.adjusted(49, 49, -49, -49).contains(blocks[i]))
                    << entries << " entries, block " << i << " on " << size.width() << 'x' << size.height();
                for (qsizetype k = 0; k < i; ++k)
                    EXPECT_FALSE(blocks[i].adjusted(0.5, 0.5, -0.5, -0.5).intersects(blocks[k]))
                        << entries << ' ' << i << ' ' << k;
            }
            EXPECT_GT(at.map.width() * at.map.height(), page.width() * page.height() * 0.1);
        }
    }
}

TEST(LegendTableTest, ElidesLongTextsAndCountsWhatDoesNotFit)
{
    QList<LegendRow> rows = legend(6);
    rows[1].description = u"A description that goes on and on until nobody reads it any more"_s;
    rows[2].shown = false;
    const LegendTable table(rows, 12);
    EXPECT_TRUE(table.texts(table.fullWidth(), table.fullHeight())[1].contains(u"any more|1,000|1"_s));
    const double width = (table.leastWidth() + table.fullWidth()) / 2;
    const QStringList lines = table.texts(width, table.fullHeight());
    ASSERT_EQ(lines.size(), 6);
    EXPECT_TRUE(lines[1].contains(u"…|1,000|1"_s));
    EXPECT_TRUE(lines[2].contains(u"(hidden)|2,000|2"_s));
    EXPECT_THAT(table.texts(width, table.rowHeight() * 4.5).mid(2), ElementsAre(u"... and 4 more"_s));
}

TEST(MapPictureTest, ShowsTubesAndLegendInTheirColours)
{
    ellery::SteamGen steamGen = sample::block(6, 6);
    ellery::TubeStates tubes(steamGen.numTube());
    for (int i = 0; i < steamGen.numTube(); ++i)
        tubes.setMark(i, markOf(u'-', 0x20C040));
    const MapScene scene(steamGen, tubes);
    PictureContent what = content(1);
    what.legend[0].mark.colour = tarnwick::ColourRef(0x4000F0);
    const QImage image = MapPicture(scene, what).toImage(QSizeF(11, 8.5), 96);
    ASSERT_EQ(image.size(), QSize(1056, 816));
    const MapPicture::Layout at = MapPicture(scene, what).layout(image.rect(), 96);
    const auto count = [&](const QRectF &rect, const QColor &colour) {
        int found = 0;
        for (int y = int(rect.top()); y < int(rect.bottom()); ++y) {
            for (int x = int(rect.left()); x < int(rect.right()); ++x)
                found += image.pixelColor(x, y) == colour;
        }
        return found;
    };
    EXPECT_GT(count(at.map, QColor(0x40, 0xC0, 0x20)), 36 * 200);
    EXPECT_GT(count(at.legend, QColor(0xF0, 0, 0x40)), 20);
    EXPECT_EQ(count(at.legend, QColor(0x40, 0xC0, 0x20)), 0);
    EXPECT_EQ(image.pixelColor(2, 2), QColor(Qt::white));
}

TEST(MapPictureTest, TitleSubtitleAndSignaturesFindTheirPlaces)
{
    const MapScene scene(sample::block(4, 4));
    const QRectF page(0, 0, 1100, 850);
    PictureContent what = content(2);
    what.subtitle = u"below"_s;
    what.signatures = u"Prepared by A"_s;
    const MapPicture::Layout at = MapPicture(scene, what).layout(page, 100);
    EXPECT_TRUE(at.title.contains(at.subtitle));
    EXPECT_GT(at.subtitle.top(), at.title.top());
    EXPECT_EQ(at.titleScale, 1);
    EXPECT_NEAR(at.signatures.top(), at.footer.top(), 0.01);
    EXPECT_NEAR(at.footer.right(), at.signatures.left(), 0.01);
    EXPECT_NEAR(at.signatures.right(), 1050, 0.01);

    // Long texts: smaller letters in place of cut ones, and a line of its own in the footer.
    what.title = QStringList(14, u"a line"_s).join(u'\n');
    what.titleFont.setPointSize(20);
    what.signatures = QString(300, u'x');
    const MapPicture::Layout tight = MapPicture(scene, what).layout(page, 100);
    EXPECT_LT(tight.titleScale, 1);
    EXPECT_LE(tight.title.height(), 850 * 0.3);
    EXPECT_LT(tight.signatures.bottom(), tight.footer.top() + 0.01);
    EXPECT_FALSE(tight.map.intersects(tight.signatures));
    what.title.clear();
    what.subtitle = u"alone"_s;
    EXPECT_EQ(MapPicture(scene, what).layout(page, 100).subtitle, MapPicture(scene, what).layout(page, 100).title);
}

TEST(MapPictureTest, ATitleOfMegabytesIsCutWhereNoPageHasRoom)
{
    PictureContent what = content(1);
    what.title = u"line of text\n"_s.repeated(500'000);
    what.subtitle = what.signatures = u"word "_s.repeated(1'000'000);
    const std::clock_t start = std::clock();
    EXPECT_FALSE(MapPicture(MapScene(sample::block(4, 4)), what).toImage(QSizeF(11, 8.5), 96).isNull());
    EXPECT_LT((std::clock() - start) / CLOCKS_PER_SEC, 10);
}

TEST(MapPictureTest, ALegendThatFindsNoRoomGoesOnOnFurtherPages)
{
    const MapScene scene(sample::block(4, 4));
    const QSizeF inches(11, 8.5);
    const QRectF page(QPointF(0, 0), inches * 100);
    EXPECT_TRUE(MapPicture(scene, content(8)).furtherPages(page, 100).isEmpty());
    PictureContent narrow = content(200);
    narrow.margins = QMarginsF(5, 5, 5, 5);
    EXPECT_LE(MapPicture(scene, narrow).furtherPages(page, 100).size(), 40) << "however little room there is";
    const MapPicture many(scene, content(200));
    const auto further = many.furtherPages(page, 100);
    EXPECT_GE(further.size(), 3);
    // Every entry is there once, whatever page it is on.
    QString all;
    for (qsizetype number = -1; number < further.size(); ++number) {
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        QSvgGenerator generator;
        generator.setOutputDevice(&buffer);
        QPainter painter(&generator);
        if (number < 0)
            many.paint(painter, page, 100);
        else
            many.paintFurther(painter, page, 100, further[number]);
        painter.end();
        all += QString::fromUtf8(buffer.data());
    }
    for (int i = 0; i < 200; ++i)
        EXPECT_EQ(all.count(u">Entry number %1 "_s.arg(i)), 1) << i;
}

TEST(MapPictureTest, WritesEveryFormAndLeavesOldFilesOnFailure)
{
    const QTemporaryDir folder;
    const MapPicture picture(MapScene(sample::block(4, 4)), content(2));
    const auto bytes = [&](const QString &name) {
        picture.save(folder.filePath(name), QSizeF(5, 4), 80);
        return support::readFile(folder.filePath(name));
    };
    for (const QString &name : {u"a.png"_s, u"b.BMP"_s}) {
        bytes(name);
        EXPECT_EQ(QImageReader(folder.filePath(name)).size(), QSize(400, 320)) << qPrintable(name);
    }
    const QByteArray pdf = bytes(u"c.pdf"_s);
    EXPECT_TRUE(pdf.startsWith("%PDF"));
    EXPECT_TRUE(pdf.contains("/MediaBox [0 0 360 288]") || pdf.contains("/MediaBox [0 0 360.000000 288.000000]"))
        << pdf.mid(pdf.indexOf("/MediaBox"), 60).constData();
    const QByteArray svg = bytes(u"d.svg"_s);
    EXPECT_TRUE(svg.contains("DESCRIPTION") && svg.contains("<circle"));

    // Texts of a foreign map do not become markup, and the file stays one that programs open.
    PictureContent foreign = content(2);
    foreign.title = u"</title><script>a & b\x1b[31m\uFFFF"_s;
    foreign.titleFont = QFont(u"F\" onload=\"x"_s);
    foreign.legend[0].description = u"<script>\x01 & \"q\""_s;
    MapPicture(MapScene(sample::block(4, 4)), foreign).save(folder.filePath(u"f.svg"_s));
    QXmlStreamReader xml(tarnwick::readFile(folder.filePath(u"f.svg"_s)));
    QStringList texts;
    while (!xml.atEnd()) {
        xml.readNext();
        EXPECT_NE(xml.name(), u"script");
        EXPECT_FALSE(xml.attributes().hasAttribute("onload"_L1));
        if (xml.isCharacters())
            texts.append(xml.text().toString());
    }
    EXPECT_FALSE(xml.hasError()) << qPrintable(xml.errorString());
    EXPECT_TRUE(texts.contains(u"</title><script>a & b[31m"_s));
    EXPECT_TRUE(texts.join(u'\n').contains(u"<script>"_s));

    EXPECT_THROW(picture.save(folder.filePath(u"e.gif"_s)), tarnwick::FileError);
    EXPECT_THROW(picture.save(folder.filePath(u"a.png"_s), QSizeF(9000, 9000), 600), PictureError);
    tarnwick::failWritesAfter(10);
    EXPECT_THROW(picture.save(folder.filePath(u"a.png"_s)), tarnwick::FileError);
    tarnwick::failWritesAfter(-1);
    EXPECT_EQ(QImageReader(folder.filePath(u"a.png"_s)).size(), QSize(400, 320));
}

} // namespace
