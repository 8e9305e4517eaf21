#include "common/ui/icons.h"

#include <QFile>
#include <QIconEngine>
#include <QPixmapCache>
#include <QSvgRenderer>

#include "common/ui/look_style.h"

// The library is static, so its resources are enrolled by whoever needs them first. The macro
// cannot stand in a namespace.
static void EnrolIcons() {
    Q_INIT_RESOURCE(look);
}

namespace zorvane {

namespace {

QString FileOf(const QString& name) {
    EnrolIcons();
    return QStringLiteral(":/look/icons/%1.svg").arg(name);
}

// The drawing for 16 px has the same lines, but on whole pixels.
QByteArray DrawingOf(const QString& name, double size) {
    constexpr double kSmallDrawingBelow = 20;
    QFile small(FileOf(name + QStringLiteral("-16")));
    if (size < kSmallDrawingBelow && small.open(QIODevice::ReadOnly))
        return small.readAll();
    QFile file(FileOf(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QPixmap Drawn(QByteArray drawing, const QSize& pixels, const QColor& color) {
    drawing.replace("currentColor", color.name().toLatin1());
    QSvgRenderer renderer(drawing);
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    renderer.render(&painter);
    return pixmap;
}

class LookIconEngine : public QIconEngine {
  public:
    LookIconEngine(QString name, Token color) : name_(std::move(name)), color_(color) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
        PaintIcon(*painter, name_, rect,
                  Tokens()[mode == QIcon::Disabled ? Token::Disabled : color_]);
    }
    QPixmap scaledPixmap(const QSize& size, QIcon::Mode mode, QIcon::State state,
                         qreal scale) override {
        QPixmap pixmap(size);
        pixmap.setDevicePixelRatio(scale);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        const QSizeF wanted = QSizeF(size) / scale;
        paint(&painter, QRect(QPoint(), wanted.toSize()), mode, state);
        return pixmap;
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        return scaledPixmap(size, mode, state, 1);
    }
    QSize actualSize(const QSize& size, QIcon::Mode, QIcon::State) override { return size; }
    bool isNull() override { return !HasIcon(name_); }
    QIconEngine* clone() const override { return new LookIconEngine(*this); }
    QString key() const override { return QStringLiteral("zorvane"); }

  private:
    QString name_;
    Token color_;
};

}  // namespace

QIcon LookIcon(const QString& name, Token color) {
    return name.isEmpty() ? QIcon() : QIcon(new LookIconEngine(name, color));
}

QIcon ProgramIcon() {
    QIcon icon(FileOf(QStringLiteral("zorvane-16")));
    icon.addFile(FileOf(QStringLiteral("zorvane")), QSize(128, 128));
    return icon;
}

bool HasIcon(const QString& name) {
    return QFile::exists(FileOf(name));
}

void PaintIcon(QPainter& painter, const QString& name, const QRectF& place, const QColor& color) {
    // Reading a drawing takes a third of a millisecond, and a window shows thirty: Qt's cache keeps
    // what was drawn.
    const double ratio = painter.device()->devicePixelRatioF();
    const QSize pixels = (place.size() * ratio).toSize();
    const QString key = QStringLiteral("zorvane/%1/%2x%3@%4/%5")
                            .arg(name)
                            .arg(pixels.width())
                            .arg(pixels.height())
                            .arg(ratio)
                            .arg(color.name());
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        pixmap = Drawn(DrawingOf(name, place.height()), pixels, color);
        pixmap.setDevicePixelRatio(ratio);
        QPixmapCache::insert(key, pixmap);
    }
    painter.drawPixmap(place.topLeft(), pixmap);
}

}  // namespace zorvane
