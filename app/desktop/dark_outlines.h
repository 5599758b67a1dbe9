#pragma once

#include <QProxyStyle>

/// The style in use, with frames and hints that can be seen on a black window too. A style that darkens the
/// window's colour for them draws inputs, ticks and choices without any there.
class DarkOutlines : public QProxyStyle {
    Q_OBJECT
public:
    using QProxyStyle::polish;
    using QProxyStyle::QProxyStyle;

    /// Desktops that colour everything else may leave the hints of empty inputs as dark as a black input is.
    void polish(QPalette &palette) override;
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override;
};
