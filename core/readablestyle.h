#pragma once

#include <QProxyStyle>

/// The Fusion style, mended where it is hard to read or to follow: lists and text views show by their frame that they
/// have the focus, small buttons and selected entries by an outline, disabled texts stand out from their ground by 3:1
/// at least, and selected texts by 4.5:1. A theme's own colours are kept where they do so already.
class TReadableStyle : public QProxyStyle
{
public:
    TReadableStyle();

    void polish(QPalette& palette) override;
    using QProxyStyle::polish;

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget = nullptr) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget = nullptr) const override;
};
