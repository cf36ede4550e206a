// Foreign texts: converting 100,000 lines beside reading them and splitting each at its columns, the first screen of a
// text of 1,000,000 lines, and a change of one field's columns up to the painted view.
#include <benchmark/benchmark.h>
#include <conversion/dialogs/TextReport.h>
#include <conversion/FieldCutter.h>
#include <conversion/ReportConversion.h>

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>

using namespace Qt::StringLiterals;
using namespace conversion;

namespace {

constexpr int kConverted = 100'000;
constexpr int kShown = 1'000'000;

/// A text of so many lines, in a file that lives as long as the program.
QString textFile(int lines)
{
    static QTemporaryDir folder;
    const QString path = folder.filePath(QString::number(lines) + u".txt"_s);
    if (QFile file(path); !file.exists() && file.open(QFile::WriteOnly)) {
        for (int i = 0; i < lines; ++i) {
            const QByteArray row = QByteArray::number(i / 100 % 100 + 1).rightJustified(3);
            const QByteArray col = QByteArray::number(i % 100 + 1).rightJustified(3);
            const QByteArray depth = i % 3 == 0 ? " 42" : "NDD";
            const QByteArray place = "TSH +" + QByteArray::number(i % 90) + ".25";
            const QByteArray fileNumber = QByteArray::number(i / 20 % 1000).rightJustified(3, '0');
            file.write("  0 " + row + ' ' + col + "  1.25 170 " + depth + ' ' + "P1  " + place.leftJustified(25) +
                       "TEHTEC                     AB123 primary          R12HC00001." + fileNumber + '\n');
        }
    }
    return path;
}

void readLines(benchmark::State &state)
{
    const QString path = textFile(kConverted);
    for (auto _ : state) {
        const TextSource text(path);
        benchmark::DoNotOptimize(text.lineCount());
    }
}

/// The least that any conversion has to do: the text of each field of each line.
void readAndSplit(benchmark::State &state)
{
    const QString path = textFile(kConverted);
    const ReportConvSpec spec;
    for (auto _ : state) {
        const TextSource text(path);
        std::vector<QStringList> lines(size_t(text.lineCount()));
        for (int i = 0; i < text.lineCount(); ++i) {
            lines[size_t(i)].reserve(spec.reportFields.size());
            for (const ConvField &field : spec.reportFields)
                lines[size_t(i)].append(cutColumns(text.line(i), field.firstColumn, field.lastColumn).toString());
        }
        benchmark::DoNotOptimize(lines.data());
    }
}

void convertLines(benchmark::State &state)
{
    const QString path = textFile(kConverted);
    const brannock::Project project;
    for (auto _ : state) {
        ReportConversion conversion(project);
        conversion.convertFile(path);
        benchmark::DoNotOptimize(conversion.report().numEntry());
    }
}

void firstScreen(benchmark::State &state)
{
    const QString path = textFile(kShown);
    const ellery::SteamGen component;
    TextReport view;
    view.resize(1200, 900);
    view.setMarks(FieldMarks(ReportConvSpec(), component));
    for (auto _ : state) {
        const TextSource head = TextSource::head(path);
        view.setText(&head);
        benchmark::DoNotOptimize(view.grab());
        view.setText(nullptr);
    }
}

void changeColumns(benchmark::State &state)
{
    const TextSource text(textFile(kShown));
    const ellery::SteamGen component;
    TextReport view;
    view.resize(1200, 900);
    view.setText(&text);
    ReportConvSpec spec;
    for (auto _ : state) {
        spec.reportFields[3].lastColumn ^= 1;
        view.setMarks(FieldMarks(spec, component));
        benchmark::DoNotOptimize(view.grab());
    }
}

BENCHMARK(readLines)->Unit(benchmark::kMillisecond);
BENCHMARK(readAndSplit)->Unit(benchmark::kMillisecond);
BENCHMARK(convertLines)->Unit(benchmark::kMillisecond);
BENCHMARK(firstScreen)->Unit(benchmark::kMillisecond);
BENCHMARK(changeColumns)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char **argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
