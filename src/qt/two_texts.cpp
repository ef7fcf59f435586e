#include "qt/two_texts.h"

#include <QScrollBar>
#include <QString>

namespace desk::qt {

namespace {

/// For example "3 bytes differ, the first at 0x12"; empty if none differ.
QString words_of(const std::vector<std::size_t>& bytes) {
    if (bytes.empty()) return {};
    const QString first = "0x" + QString::number(bytes.front(), 16).rightJustified(2, '0').toUpper();
    return bytes.size() == 1 ? "1 byte differs, at " + first
                             : QString::number(bytes.size()) + " bytes differ, the first at " + first;
}

} // namespace

two_texts::two_texts(text_page& write, text_page& read, const workbench_frame& view, const difference& differing)
    : write_{write, view.txt_write, write.accessibleDescription()}
    , read_{read, view.txt_read, read.accessibleDescription()}
    , differing_(differing) {
    connect(write.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { scroll_along(write_, read_); });
    connect(read.verticalScrollBar(), &QScrollBar::valueChanged, this, [this] { scroll_along(read_, write_); });
}

void two_texts::scroll_along(const side& leader, const side& other) {
    // a shorter text stops at its end and does not pull the longer one back
    if (scrolls_) return;
    scrolls_ = true;
    other.page.verticalScrollBar()->setValue(leader.page.verticalScrollBar()->value());
    scrolls_ = false;
}

void two_texts::follow() {
    const std::vector<std::size_t>& bytes = differing_.bytes();
    if (marked_ == bytes) return;
    marked_ = bytes;
    mark(write_, bytes);
    mark(read_, bytes);
}

void two_texts::mark(const side& s, const std::vector<std::size_t>& bytes) {
    std::vector<text_lines::range> marks;
    if (!bytes.empty()) {
        const std::vector<std::size_t> places = places_of_bytes(s.model.text.get());
        for (const std::size_t byte : bytes)
            if (byte < places.size()) marks.push_back({places[byte], places[byte] + 2});
    }
    s.page.set_marks(std::move(marks));
    s.page.setAccessibleDescription(bytes.empty() ? s.description : words_of(bytes));
}

} // namespace desk::qt
