// Pictures that are drawn when they are shown, at the resolution of the screen.
#pragma once

#include <QColor>
#include <QQuickPaintedItem>
#include <QString>

namespace tarvik {

class Applications;

/// One of the line drawings of symbols/, in one colour.
class Symbol : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString name READ name WRITE setName NOTIFY changed)
    Q_PROPERTY(QColor color READ color WRITE setColor NOTIFY changed)

public:
    const QString& name() const { return name_; }
    void setName(const QString& name);
    const QColor& color() const { return color_; }
    void setColor(const QColor& color);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    QString name_;
    QColor color_ = Qt::black;
};

/// The icon of an installed application, or the symbol of one where it has none.
class ApplicationIcon : public QQuickPaintedItem {
    Q_OBJECT
    Q_PROPERTY(QString appId READ appId WRITE setAppId NOTIFY changed)

public:
    /// Where the icons of all items come from.
    static void setSource(Applications* applications) { source_ = applications; }

    const QString& appId() const { return appId_; }
    void setAppId(const QString& id);

    void paint(QPainter* painter) override;

signals:
    void changed();

private:
    static Applications* source_;
    QString appId_;
};

/// The program's own icon.
class ProgramIcon : public QQuickPaintedItem {
    Q_OBJECT

public:
    void paint(QPainter* painter) override;
};

} // namespace tarvik
