#pragma once
#include <memory>
#include <QByteArray>
#include <QPaintDevice>
#include <QSizeF>
#include <QString>

namespace brannock {

/// A paint device that writes an enhanced metafile (.emf) for office programs. Supports shapes, text and pictures, but
/// no clipping; transparent colours and pixels are blended with white.
class EmfDevice : public QPaintDevice
{
public:
    /// dpi: the painter's units per inch
    EmfDevice(const QSizeF &inches, int dpi, const QString &title);
    ~EmfDevice() override;

    QPaintEngine *paintEngine() const override;
    /// The file's content after painting has ended; empty if it failed.
    QByteArray bytes() const;

protected:
    int metric(PaintDeviceMetric metric) const override;

private:
    class Engine;
    std::unique_ptr<Engine> m_engine;
    QSize m_size;
    int m_dpi;
};

} // namespace brannock
