#pragma once
#include <brannock/paint/MapScene.h>
#include <QFrame>

namespace brannock {

/// Sample of tubes as the map paints them, marked and open, in two sizes; one marked tube is selected.
class SymbolSample : public QFrame
{
    Q_OBJECT
public:
    explicit SymbolSample(const MapOptions &options, QWidget *parent = nullptr);
    void setMark(const TubeMark &mark);
    QSize sizeHint() const override { return QSize(200, 96); }
    QSize minimumSizeHint() const override { return QSize(160, 72); }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void paintTubes(QPainter &painter, const QRectF &area, double pitch) const;

    MapOptions m_options;
    TubeMark m_mark;
};

} // namespace brannock
