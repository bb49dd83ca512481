#pragma once

#include <QProxyStyle>

namespace kpx {

/// Fusion with flat, rounded controls, an underlined tab bar, cards (a QFrame of shape StyledPanel) and
/// one clear ring for the focus. A push button with the property "accent" is the main one of its group.
class CalmStyle : public QProxyStyle {
    Q_OBJECT

public:
    explicit CalmStyle(bool headingsAreBold);

    bool headingsAreBold() const { return m_headingsAreBold; }

    /// How long the mouse rests before a tool tip appears.
    void setToolTipDelay(int milliseconds) { m_toolTipDelay = milliseconds; }

    void polish(QWidget* widget) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* returnData) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                           const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl subControl,
                         const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    QIcon standardIcon(StandardPixmap pixmap, const QStyleOption* option, const QWidget* widget) const override;

private:
    bool m_headingsAreBold;
    int m_toolTipDelay = 700;
};

}  // namespace kpx
