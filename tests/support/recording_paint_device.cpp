#include "recording_paint_device.h"

#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>

namespace
{
QString to_text(qreal value)
{
    return QString::number(value, 'g', 10);
}

QString to_text(const QPointF& point)
{
    return to_text(point.x()) + QLatin1Char(',') + to_text(point.y());
}

QString to_text(const QRectF& rect)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(to_text(rect.x()), to_text(rect.y()), to_text(rect.width()), to_text(rect.height()));
}

QString to_text(const QSize& size)
{
    return QStringLiteral("%1x%2").arg(size.width()).arg(size.height());
}

QString to_text(const QPainterPath& path)
{
    QStringList parts;
    for (int i = 0; i < path.elementCount(); ++i)
    {
        const QPainterPath::Element element = path.elementAt(i);
        const char* letter = "";
        if (element.type == QPainterPath::MoveToElement)
            letter = "M";
        else if (element.type == QPainterPath::LineToElement)
            letter = "L";
        else if (element.type == QPainterPath::CurveToElement)
            letter = "C";
        parts << QLatin1String(letter) + to_text(QPointF(element));
    }
    return parts.join(QLatin1Char(' '));
}
} // namespace

class RECORDING_PAINT_DEVICE::ENGINE : public QPaintEngine
{
public:
    ENGINE() : QPaintEngine(QPaintEngine::AllFeatures)
    {
    }

    QVector<PAINT_COMMAND> commands;

    bool begin(QPaintDevice*) override
    {
        setActive(true);
        return true;
    }
    bool end() override
    {
        setActive(false);
        return true;
    }
    Type type() const override
    {
        return QPaintEngine::User;
    }

    void updateState(const QPaintEngineState& new_state) override
    {
        if (new_state.state() & DirtyPen)
            m_state.pen = new_state.pen();
        if (new_state.state() & DirtyBrush)
            m_state.brush = new_state.brush();
        if (new_state.state() & DirtyFont)
            m_state.font = new_state.font();
        if (new_state.state() & DirtyTransform)
            m_state.transform = new_state.transform();
        if (new_state.state() & DirtyOpacity)
            m_state.opacity = new_state.opacity();
        if (new_state.state() & (DirtyClipPath | DirtyClipRegion | DirtyClipEnabled))
            m_state.clip = painter()->hasClipping() ? painter()->clipBoundingRect() : QRectF();
    }

    void drawRects(const QRectF* rects, int count) override
    {
        for (int i = 0; i < count; ++i)
            add(QStringLiteral("rect ") + to_text(rects[i]));
    }
    void drawLines(const QLineF* lines, int count) override
    {
        for (int i = 0; i < count; ++i)
            add(QStringLiteral("line %1 %2 %3 %4")
                    .arg(to_text(lines[i].x1()), to_text(lines[i].y1()), to_text(lines[i].x2()),
                         to_text(lines[i].y2())));
    }
    void drawPoints(const QPointF* points, int count) override
    {
        for (int i = 0; i < count; ++i)
            add(QStringLiteral("point %1 %2").arg(to_text(points[i].x()), to_text(points[i].y())));
    }
    void drawEllipse(const QRectF& rect) override
    {
        add(QStringLiteral("ellipse ") + to_text(rect));
    }
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override
    {
        QStringList parts(mode == PolylineMode ? QStringLiteral("polyline") : QStringLiteral("polygon"));
        for (int i = 0; i < count; ++i)
            parts << to_text(points[i]);
        add(parts.join(QLatin1Char(' ')));
    }
    void drawPath(const QPainterPath& path) override
    {
        add(QStringLiteral("path ") + to_text(path));
    }
    void drawTextItem(const QPointF& position, const QTextItem& item) override
    {
        m_state.font = item.font();
        add(QStringLiteral("text %1 %2 \"%3\"").arg(to_text(position.x()), to_text(position.y()), item.text()));
    }
    void drawPixmap(const QRectF& rect, const QPixmap& pixmap, const QRectF&) override
    {
        add(QStringLiteral("pixmap %1 at %2").arg(to_text(pixmap.size()), to_text(rect)));
    }
    void drawTiledPixmap(const QRectF& rect, const QPixmap& pixmap, const QPointF&) override
    {
        add(QStringLiteral("tiled pixmap %1 at %2").arg(to_text(pixmap.size()), to_text(rect)));
    }
    void drawImage(const QRectF& rect, const QImage& image, const QRectF&, Qt::ImageConversionFlags) override
    {
        add(QStringLiteral("image %1 at %2").arg(to_text(image.size()), to_text(rect)));
    }
    using QPaintEngine::drawEllipse;
    using QPaintEngine::drawLines;
    using QPaintEngine::drawPoints;
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

private:
    PAINT_COMMAND m_state;

    void add(const QString& text)
    {
        m_state.text = text;
        commands << m_state;
    }
};

RECORDING_PAINT_DEVICE::RECORDING_PAINT_DEVICE(const QSize& size) : m_size(size), m_engine(std::make_unique<ENGINE>())
{
}

RECORDING_PAINT_DEVICE::~RECORDING_PAINT_DEVICE() = default;

QPaintEngine* RECORDING_PAINT_DEVICE::paintEngine() const
{
    return m_engine.get();
}

const QVector<PAINT_COMMAND>& RECORDING_PAINT_DEVICE::get_commands() const
{
    return m_engine->commands;
}

QStringList RECORDING_PAINT_DEVICE::get_texts() const
{
    QStringList result;
    for (const PAINT_COMMAND& command : m_engine->commands)
        result << command.text;
    return result;
}

QVector<PAINT_COMMAND> RECORDING_PAINT_DEVICE::find(const QString& beginning) const
{
    QVector<PAINT_COMMAND> result;
    for (const PAINT_COMMAND& command : m_engine->commands)
        if (command.text.startsWith(beginning))
            result << command;
    return result;
}

bool RECORDING_PAINT_DEVICE::contains(const QString& text) const
{
    return get_texts().contains(text);
}

void RECORDING_PAINT_DEVICE::clear()
{
    m_engine->commands.clear();
}

int RECORDING_PAINT_DEVICE::metric(PaintDeviceMetric metric) const
{
    constexpr int DOTS_PER_INCH = 96;
    constexpr qreal MILLIMETRES_PER_INCH = 25.4;
    switch (metric)
    {
    case PdmWidth:
        return m_size.width();
    case PdmHeight:
        return m_size.height();
    case PdmWidthMM:
        return qRound(m_size.width() * MILLIMETRES_PER_INCH / DOTS_PER_INCH);
    case PdmHeightMM:
        return qRound(m_size.height() * MILLIMETRES_PER_INCH / DOTS_PER_INCH);
    case PdmNumColors:
        return 1 << 24;
    case PdmDepth:
        return 32;
    case PdmDpiX:
    case PdmDpiY:
    case PdmPhysicalDpiX:
    case PdmPhysicalDpiY:
        return DOTS_PER_INCH;
    case PdmDevicePixelRatio:
        return 1;
    case PdmDevicePixelRatioScaled:
        return int(devicePixelRatioFScale());
    }
    return 0;
}
