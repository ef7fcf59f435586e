#pragma once

#include <QMimeData>

#include <string>
#include <string_view>

namespace desk::qt {

/// A text that is converted only when it is pasted.
class text_on_clipboard final : public QMimeData {
    Q_OBJECT

public:
    explicit text_on_clipboard(std::string_view text) : text_(text) {}

    QStringList formats() const override;
    bool hasFormat(const QString& format) const override;

protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override;

private:
    std::string text_;
};

} // namespace desk::qt
