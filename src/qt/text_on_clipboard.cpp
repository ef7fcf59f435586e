#include "qt/text_on_clipboard.h"

#include "qt/appearance.h"

namespace desk::qt {

namespace {

const QString plain_text = "text/plain";

} // namespace

QStringList text_on_clipboard::formats() const { return {plain_text}; }

bool text_on_clipboard::hasFormat(const QString& format) const { return format == plain_text; }

QVariant text_on_clipboard::retrieveData(const QString& format, QMetaType /*type*/) const {
    return hasFormat(format) ? QVariant(shown_text(text_)) : QVariant();
}

} // namespace desk::qt
