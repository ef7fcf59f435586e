#pragma once

#include <QProxyStyle>

namespace desk::qt {

/// The style of the whole program: flat, with hairline borders, in the colours of `scheme.h` and the sizes of
/// `metrics.h`, at each window's scale. `drawing.h` lists what it draws; Qt's style draws the rest.
class desk_style final : public QProxyStyle {
    Q_OBJECT

public:
    desk_style();

    /// Widget properties: whether a scroll bar is a slider, and the `frame_kind` of a group box.
    static constexpr const char* slider = "slider";
    static constexpr const char* kind_of_frame = "kind_of_frame";

    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                       const QWidget* widget) const override;
    void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override;
    void drawComplexControl(ComplexControl control, const QStyleOptionComplex* option, QPainter* painter,
                            const QWidget* widget) const override;
    QRect subElementRect(SubElement element, const QStyleOption* option, const QWidget* widget) const override;
    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override;
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override;
    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override;
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override;
    QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
    QPalette standardPalette() const override;
    using QProxyStyle::polish;
    void polish(QWidget* widget) override;
};

} // namespace desk::qt
