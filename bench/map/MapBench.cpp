#include "SampleBundle.h"

#include <array>
#include <benchmark/benchmark.h>
#include <brannock/gui/TubesheetMap.h>
#include <brannock/paint/MapCache.h>
#include <QApplication>
#include <QImage>
#include <QMouseEvent>
#include <QWheelEvent>
#include <string>

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
    ellery::TubeStates tubes;
    MapScene scene;
    QImage image;
    MapView view;

    explicit Setup(const benchmark::State &state)
        : steamGen(bundle(int(state.range(0))))
        , tubes(marks(steamGen))
        , scene(steamGen, tubes)
        , image(int(state.range(1)), int(state.range(1)) * 9 / 16, QImage::Format_RGB32)
        , view(fitted(scene, image.size()))
    {
    }
};

/// Adds the limit of the result in milliseconds of CPU time: for 16,000 tubes on a screen of 1920 or 3840 pixels, and
/// for 100,000 tubes.
void goal(benchmark::State &state, const std::array<int, 4> &milliseconds)
{
    const size_t place = size_t(state.range(0) > 16000 ? 2 : 0) + size_t(state.range(1) > 1920 ? 1 : 0);
    if (milliseconds[place] > 0)
        state.SetLabel("goal " + std::to_string(milliseconds[place]) + " ms");
}

/// Time of a frame at 60 Hz.
constexpr std::array<int, 4> kFrame = {16, 16, 16, 16};

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
                             scene.mark(i).symbol.text());
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
    goal(state, {4, 10, 12, 16});
}
BENCHMARK(fullRepaint)->Apply(cases);

/// Every frame has another scale, as with a turning wheel, and needs new sprites.
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
    goal(state, kFrame);
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
    goal(state, kFrame);
}
BENCHMARK(panFrame)->Apply(cases);

/// A complete frame of the window: events, rulers and the copy to the window's buffer included.
class WindowFrame
{
public:
    explicit WindowFrame(benchmark::State &state)
        : steamGen(bundle(int(state.range(0))))
        , tubes(marks(steamGen))
        , window(int(state.range(1)), int(state.range(1)) * 9 / 16, QImage::Format_RGB32)
    {
        map.resize(window.size());
        map.setSteamGen(&steamGen, &tubes);
        map.setTubeTip(true);
        show();
    }
    // As for a widget that paints its whole area: without erasing the background first.
    void show() { map.render(&window, {}, {}, QWidget::DrawChildren); }
    void mouse(QEvent::Type type, const QPointF &pos, Qt::MouseButton button)
    {
        QMouseEvent event(type, pos, map.mapToGlobal(pos), button, button, Qt::NoModifier);
        QCoreApplication::sendEvent(&map, &event);
    }

    ellery::SteamGen steamGen;
    ellery::TubeStates tubes;
    QImage window;
    TubesheetMap map;
};

void wheelInWindow(benchmark::State &state)
{
    WindowFrame frame(state);
    const QPointF at = frame.map.rect().center() + QPointF(40, 30);
    int step = 0;
    for (auto _ : state) {
        const int turn = step++ / 12 % 2 ? -30 : 30; // touch pad: fine steps, each with a new scale
        QWheelEvent event(at, frame.map.mapToGlobal(at), QPoint(), QPoint(0, turn), Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&frame.map, &event);
        frame.show();
    }
    goal(state, kFrame);
}
BENCHMARK(wheelInWindow)->Apply(cases);

void dragInWindow(benchmark::State &state)
{
    WindowFrame frame(state);
    frame.map.zoomAt(frame.map.rect().center(), 2);
    QPointF at = frame.map.rect().center();
    frame.mouse(QEvent::MouseButtonPress, at, Qt::MiddleButton);
    int step = 0;
    for (auto _ : state) {
        at += step++ / 25 % 2 ? QPointF(11, -6) : QPointF(-11, 6);
        frame.mouse(QEvent::MouseMove, at, Qt::MiddleButton);
        frame.show();
    }
    goal(state, kFrame);
}
BENCHMARK(dragInWindow)->Apply(cases);

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

/// From the change of the selection to pixels in the window.
void selectionChange(benchmark::State &state)
{
    const ellery::SteamGen steamGen = bundle(int(state.range(0)));
    ellery::TubeStates tubes = marks(steamGen);
    TubesheetMap map;
    map.resize(int(state.range(1)), int(state.range(1)) * 9 / 16);
    map.setSteamGen(&steamGen, &tubes);
    QImage window(map.size(), QImage::Format_RGB32);
    map.render(&window);
    const QList<qint32> some = map.scene().grid().within(0, 0, 6);
    bool add = true;
    for (auto _ : state) {
        tubes.select(add ? some : QList<qint32>(), ellery::SelectMode::Replace);
        map.refresh();
        add = !add;
        map.render(&window, {}, QRegion(map.rect().center().x() - 120, map.rect().center().y() - 120, 240, 240));
    }
    state.counters["changed"] = double(some.size());
    goal(state, {2, 2, 0, 0});
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
            setup.tubes.setSelected(i, on);
        cache.patch(setup.scene, setup.scene.update(setup.tubes));
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
            setup.tubes.setMark(i, {ellery::Symbol(u'R'), tarnwick::ColourRef(colour & 0xFFFFFF)});
        cache.patch(setup.scene, setup.scene.update(setup.tubes));
        cache.update(setup.scene, setup.view, Qt::white);
    }
    goal(state, {8, 8, 0, 0});
}
BENCHMARK(recolour)->Apply(cases);

/// The pointer moves from tube to tube: ring, names on the rulers and card, old and new.
void hover(benchmark::State &state)
{
    const ellery::SteamGen steamGen = bundle(int(state.range(0)));
    ellery::TubeStates tubes = marks(steamGen);
    TubesheetMap map;
    map.resize(int(state.range(1)), int(state.range(1)) * 9 / 16);
    map.setTubeTip(true);
    map.setSteamGen(&steamGen, &tubes);
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
    goal(state, {2, 2, 0, 0});
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
