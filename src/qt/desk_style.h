#pragma once

#include <QProxyStyle>

namespace desk::qt {

/// The toolkit's classic style, with what it draws too coarsely or too faintly drawn anew: the signs of message boxes,
/// and the captions of what is disabled.
class desk_style final : public QProxyStyle {
    Q_OBJECT

public:
    desk_style();

    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* more) const override;
    QIcon standardIcon(StandardPixmap sign, const QStyleOption* option, const QWidget* widget) const override;
};

} // namespace desk::qt
