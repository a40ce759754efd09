// Draws SVG icons in the palette's colours.
#include "src/platform/qt/views/line_icon.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QPainter>
#include <QPixmapCache>
#include <QSvgRenderer>
#include <algorithm>
#include <utility>

namespace
{

class LineIconEngine final : public QIconEngine
{
public:
    LineIconEngine(QString name, QPalette::ColorRole role, QColor on_light, QColor on_dark)
        : name_(std::move(name)), role_(role), on_light_(on_light), on_dark_(on_dark)
    {
    }

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State state) override
    {
        const qreal ratio = painter->device()->devicePixelRatioF();
        const QPixmap drawn = pixmap((QSizeF(rect.size()) * ratio).toSize(), mode, state);
        painter->drawPixmap(rect, drawn);
    }

    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State) override
    {
        const QColor colour = Colour(mode);
        const QString key = QStringLiteral("varnel/%1/%2x%3/%4")
                                .arg(name_)
                                .arg(size.width())
                                .arg(size.height())
                                .arg(colour.rgba(), 8, 16);
        QPixmap result;
        if (QPixmapCache::find(key, &result))
            return result;
        result = Draw(size, colour);
        QPixmapCache::insert(key, result);
        return result;
    }

    QIconEngine* clone() const override { return new LineIconEngine(*this); }

private:
    QColor Colour(QIcon::Mode mode) const
    {
        const QPalette palette = QApplication::palette();
        if (mode == QIcon::Disabled)
            return palette.color(QPalette::Disabled, QPalette::ButtonText);
        if (mode == QIcon::Selected)
            return palette.color(QPalette::HighlightedText);
        if (!on_light_.isValid())
            return palette.color(QPalette::Active, role_);
        return palette.color(QPalette::Base).lightness() < 128 ? on_dark_ : on_light_;
    }

    QPixmap Draw(const QSize& size, const QColor& colour) const
    {
        QPixmap result(size);
        result.fill(Qt::transparent);
        QFile file(QStringLiteral(":/varnel/icons/%1.svg").arg(name_));
        if (!file.open(QIODevice::ReadOnly))
            return result;
        QSvgRenderer renderer(file.readAll());
        QPainter painter(&result);
        const qreal side = std::min(size.width(), size.height());
        renderer.render(&painter, QRectF((size.width() - side) / 2, (size.height() - side) / 2, side, side));
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(result.rect(), colour);
        return result;
    }

    QString name_;
    QPalette::ColorRole role_;
    QColor on_light_;
    QColor on_dark_;
};

}  // namespace

QIcon LineIcon(const QString& name, QPalette::ColorRole role)
{
    return QIcon(new LineIconEngine(name, role, {}, {}));
}

QIcon ColouredIcon(const QString& name, const QColor& on_light, const QColor& on_dark)
{
    return QIcon(new LineIconEngine(name, QPalette::Text, on_light, on_dark));
}
