// The cable is pulled in every phase of every transfer: the desk reports it, continues, and works again once the
// cable is back. Every stride-th moment is tested; UNPLUG_STRIDE=1 tests all.

#include "unplug_bench.h"

#include <cstdlib>

namespace desk::gui {

namespace {

class a_pulled_cable : public ::testing::TestWithParam<pulled_transfer> {};

void expect_alive(unplug_bench& b) {
    EXPECT_FALSE(b.program->gate().over());
    const bool was_shown = b.at().is_shown("fra_auto");
    b.at().click(was_shown ? "cmd_setup" : "cmd_auto");
    EXPECT_NE(b.at().is_shown("fra_auto"), was_shown) << "a view is shown at once";
}

void expect_good_link(unplug_bench& b) {
    b.cable.plug();
    b.at().click("cmd_conn");
    EXPECT_EQ(b.color_of("cmd_conn"), QColor(0, 255, 0));
    b.expect_resting("cmd_disconn");
    b.choose_row("cmd_timing", "lstv_timing", 5);
    b.at().click("cmd_run");
    EXPECT_TRUE(b.at().text("lab_timing").startsWith("[05]")) << b.at().text("lab_timing").toStdString();
    EXPECT_EQ(b.cable.generator.state.timing, 5);
    b.expect_resting("cmd_run");
    EXPECT_EQ(b.box_texts(), QStringList());
}

TEST_P(a_pulled_cable, is_reported_and_recovered_from) {
    const pulled_transfer& p = GetParam();
    unplug_bench b;
    p.what.prepare(b);
    ASSERT_EQ(b.box_texts(), QStringList());
    b.cable.pull_at(p.moment);
    p.what.act(b);
    EXPECT_TRUE(wait_until([&] { return b.cable.is_pulled(); }, 20000)) << "the moment is reached";
    p.expect(b);
    b.cable.pull();
    b.box_texts();
    expect_alive(b);
    expect_good_link(b);
}

std::vector<pulled_transfer> each_of_stride() {
    const char* const text = std::getenv("UNPLUG_STRIDE");
    const std::size_t stride = text == nullptr ? 13 : std::stoul(text);
    const std::vector<pulled_transfer> all = all_pulled_transfers();
    std::vector<pulled_transfer> chosen;
    for (std::size_t i = stride / 2; i < all.size(); i += stride)
        if (stride == 1 || !all[i].takes_minutes) chosen.push_back(all[i]);
    return chosen;
}

INSTANTIATE_TEST_SUITE_P(in, a_pulled_cable, ::testing::ValuesIn(each_of_stride()),
                         [](const auto& test) { return test.param.name; });

} // namespace

} // namespace desk::gui
