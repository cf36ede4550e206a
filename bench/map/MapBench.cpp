#include "SampleBundle.h"

#include <benchmark/benchmark.h>
#include <brannock/gui/MapCache.h>
#include <brannock/gui/TubesheetMap.h>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>

using namespace Qt::StringLiterals;
using namespace brannock;

namespace {

MapView fitted(const MapScene &scene, const QSize &size)
{
    MapView view;
    view.size = size;
    view.fit(scene.bounds(), {30, 6, 6, 24});
    return view;
}

struct Setup
{
    ellery::SteamGen steamGen;
    MapScene scene;
    QImage image;
    MapView view;

    explicit Setup(const benchmark::State &state)
        : steamGen(bundle(int(state.range(0))))
        , scene(steamGen)
        , image(int(state.range(1)), int(state.range(1)) * 9 / 16, QImage::Format_RGB32)
        , view(fitted(scene, image.size()))
    {
    }
};

void cases(benchmark::internal::Benchmark *benchmark)
{
    for (const int tubes : {16000, 100000}) {
        for (const int width : {1920, 3840})
            benchmark->Args({tubes, width});
    }
    benchmark->ArgNames({"tubes", "width"})->Unit(benchmark::kMillisecond);
}

void naiveRepaint(benchmark::State &state)
{
    Setup setup(state);
    const MapScene &scene = setup.scene;
    const double radius = scene.radius() * setup.view.scale;
    for (auto _ : state) {
        setup.image.fill(Qt::white);
        QPainter painter(&setup.image);
        painter.setRenderHint(QPainter::Antialiasing);
        QFont font(u"DejaVu Sans"_s);
        font.setPixelSize(std::max(3, int(radius * 1.4)));
        painter.setFont(font);
        for (int i = 0; i < scene.numTube(); ++i) {
            const QPointF centre = setup.view.toView(scene.position(i));
            const QColor colour = fromColourRef(scene.mark(i).colour);
            painter.setPen(colour.darker());
            painter.setBrush(colour);
            painter.drawEllipse(centre, radius, radius);
            painter.setPen(inkOn(colour));
            painter.drawText(QRectF(centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius), Qt::AlignCenter,
                             QString(QChar(scene.mark(i).symbol)));
        }
    }
}
BENCHMARK(naiveRepaint)->Apply(cases);

void fullRepaint(benchmark::State &state)
{
    Setup setup(state);
    MapCache cache;
    cache.update(setup.scene, setup.view, Qt::white);
    for (auto _ : state) {
        cache.invalidate();
        cache.update(setup.scene, setup.view, Qt::white);
    }
}
BENCHMARK(fullRepaint)->Apply(cases);

/// Every frame at another scale, as a turning wheel makes them: new sprites each time.
void zoomFrame(benchmark::State &state)
{
    Setup setup(state);
    MapCache cache;
    int step = 0;
    for (auto _ : state) {
        MapView view = setup.view;
        view.zoomAt({100, 100}, 1 + 0.01 * (++step % 40));
        cache.update(setup.scene, view, Qt::white);
    }
}
BENCHMARK(zoomFrame)->Apply(cases);

void panFrame(benchmark::State &state)
{
    Setup setup(state);
    MapCache cache;
    setup.view.zoomAt({200, 200}, 2);
    cache.update(setup.scene, setup.view, Qt::white);
    int step = 0;
    for (auto _ : state) {
        setup.view.panBy(step++ / 20 % 2 ? QPointF(13, 7) : QPointF(-13, -7));
        cache.update(setup.scene, setup.view, Qt::white);
    }
}
BENCHMARK(panFrame)->Apply(cases);

void atlas(benchmark::State &state)
{
    Setup setup(state);
    const TubeArt art = TubeArt::forPixels(setup.scene.options, setup.scene.pitch() * setup.view.scale);
    for (auto _ : state) {
        SpriteAtlas sprites;
        sprites.prepare(setup.scene, art);
        for (quint32 look = 2; look < setup.scene.numLooks(); look += 2)
            sprites.ensure(setup.scene, look);
        state.counters["sprites"] = sprites.count();
    }
}
BENCHMARK(atlas)->Apply(cases);

/// From the change of the selection in the steam generator to pixels in the window.
void selectionChange(benchmark::State &state)
{
    ellery::SteamGen steamGen = bundle(int(state.range(0)));
    TubesheetMap map;
    map.resize(int(state.range(1)), int(state.range(1)) * 9 / 16);
    map.setSteamGen(&steamGen);
    QImage window(map.size(), QImage::Format_RGB32);
    map.render(&window);
    const QList<qint32> some = map.scene().grid().within(0, 0, 6);
    bool add = true;
    for (auto _ : state) {
        map.select(add ? some : QList<qint32>(), TubesheetMap::SelectMode::Replace);
        add = !add;
        map.render(&window, {}, QRegion(map.rect().center().x() - 120, map.rect().center().y() - 120, 240, 240));
    }
    state.counters["changed"] = double(some.size());
}
BENCHMARK(selectionChange)->Apply(cases);

void selectAll(benchmark::State &state)
{
    Setup setup(state);
    MapCache cache;
    cache.update(setup.scene, setup.view, Qt::white);
    bool on = false;
    for (auto _ : state) {
        on = !on;
        for (int i = 0; i < setup.steamGen.numTube(); ++i)
            setup.steamGen.setSelected(i, on);
        cache.patch(setup.scene, setup.scene.update(setup.steamGen));
        cache.update(setup.scene, setup.view, Qt::white);
    }
}
BENCHMARK(selectAll)->Apply(cases);

void recolour(benchmark::State &state)
{
    Setup setup(state);
    MapCache cache;
    cache.update(setup.scene, setup.view, Qt::white);
    quint32 colour = 0;
    for (auto _ : state) {
        colour += 0x010203;
        for (int i = 0; i < setup.steamGen.numTube(); i += 5)
            setup.steamGen.setSymbol(i, u'R', colour & 0xFFFFFF);
        cache.patch(setup.scene, setup.scene.update(setup.steamGen));
        cache.update(setup.scene, setup.view, Qt::white);
    }
}
BENCHMARK(recolour)->Apply(cases);

/// The pointer goes from one tube to the next: ring, names on the rulers and the card, old and new.
void hover(benchmark::State &state)
{
    ellery::SteamGen steamGen = bundle(int(state.range(0)));
    TubesheetMap map;
    map.resize(int(state.range(1)), int(state.range(1)) * 9 / 16);
    map.setTubeTip(true);
    map.setSteamGen(&steamGen);
    map.show();
    QCoreApplication::processEvents();
    int tube = 0;
    for (auto _ : state) {
        tube = (tube + 1) % steamGen.numTube();
        const QPointF pos = map.posOf(tube);
        QMouseEvent event(QEvent::MouseMove, pos, map.mapToGlobal(pos), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(&map, &event);
        QCoreApplication::processEvents();
    }
}
BENCHMARK(hover)->Apply(cases);

} // namespace

int main(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
