#pragma once

#include "edid/difference.h"
#include "edid/workbench_frame.h"
#include "qt/text_page.h"

#include <QObject>
#include <QString>

#include <cstddef>
#include <vector>

namespace desk::qt {

/// The READ and WRITE texts side by side: they scroll together, line by line, and both highlight the bytes in which a
/// comparison found them different.
class two_texts final : public QObject {
public:
    two_texts(text_page& write, text_page& read, const workbench_frame& view, const difference& differing);

    void follow();

private:
    struct side {
        text_page& page;
        const text_box& model;
        QString description; ///< while nothing is highlighted
    };
    void scroll_along(const side& leader, const side& other);
    static void mark(const side& s, const std::vector<std::size_t>& bytes);

    side write_;
    side read_;
    const difference& differing_;
    std::vector<std::size_t> marked_;
    bool scrolls_ = false;
};

} // namespace desk::qt
