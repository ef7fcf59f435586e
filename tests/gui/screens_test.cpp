// The window on a screen of 100 % and one of 200 %.

#include "every_view.h"
#include "qt/plan_fit.h"
#include "qt/plan_scale.h"
#include "qt/work_bar.h"
#include "visibility.h"

#include <QGuiApplication>
#include <QImage>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace desk::gui {

namespace {

constexpr QSize usual(1000, 800);

class two_screens : public view_bench {
protected:
    void SetUp() override {
        const QList<QScreen*> screens = QGuiApplication::screens();
        if (screens.size() < 2) GTEST_SKIP() << "there is one screen";
        first = screens[0];
        second = screens[1];
        ASSERT_EQ(second->devicePixelRatio(), 2 * first->devicePixelRatio());
    }

    QWidget& window() { return program->main_window(); }

    void move_to(QScreen* screen) {
        window().move(screen->geometry().topLeft() + QPoint(50, 50));
        ASSERT_TRUE(wait_until([&] { return window().devicePixelRatioF() == screen->devicePixelRatio(); }, 5000));
        QCoreApplication::processEvents();
    }
    void resize(QSize size) {
        window().resize(size);
        ASSERT_TRUE(wait_until([&] { return window().windowHandle()->size() == size; }, 5000));
        QCoreApplication::processEvents();
    }

    QScreen* first = nullptr;
    QScreen* second = nullptr;
};

class picture_after_a_move : public two_screens, public testing::WithParamInterface<bool> {
protected:
    QScreen* from() const { return GetParam() ? first : second; }
    QScreen* to() const { return GetParam() ? second : first; }
    void restart() {
        program = std::make_unique<qt::desk_program>(std::filesystem::path(directory.path().toStdString()));
        start();
    }
    void take_pictures_on(QScreen* screen) {
        move_to(screen);
        resize(usual);
        pictures.clear();
        // the bar at the bottom moves
        const QRect without_bar = window().rect().adjusted(0, 0, 0, -window().findChild<qt::work_bar*>()->height());
        for (const view& v : every_view()) {
            show(v);
            pictures.push_back(window().grab(without_bar).toImage());
        }
    }

    std::vector<QImage> pictures;
};

TEST_P(picture_after_a_move, is_that_of_a_desk_that_drew_nothing_elsewhere) {
    take_pictures_on(from());
    take_pictures_on(to());
    const std::vector<QImage> moved = pictures;
    const QSize plan(desk().form.width, desk().form.height);
    EXPECT_EQ(qt::plan_scale(&window()), qt::fitting_scale(plan, usual, to()->devicePixelRatio()));
    EXPECT_EQ(moved[0].width(), usual.width() * to()->devicePixelRatio());
    EXPECT_EQ(clipped_captions(window()), QStringList());
    restart();
    take_pictures_on(to());
    take_pictures_on(to());
    for (std::size_t i = 0; i < moved.size(); ++i)
        EXPECT_TRUE(moved[i] == pictures[i]) << every_view()[i].name;
}

INSTANTIATE_TEST_SUITE_P(to, picture_after_a_move, testing::Bool(),
                         [](const auto& test) { return test.param ? "200_percent" : "100_percent"; });

TEST_F(two_screens, shrink_a_window_that_is_too_large_for_one_of_them) {
    const QSize large = first->availableGeometry().size() * 0.9;
    resize(large);
    move_to(second);
    const QRect room = second->availableGeometry();
    ASSERT_LT(room.width(), large.width());
    EXPECT_TRUE(wait_until([&] { return room.contains(window().frameGeometry()); }, 5000));
    EXPECT_EQ(clipped_captions(window()), QStringList());
    const QSize small = window().size();
    move_to(first);
    QCoreApplication::processEvents();
    EXPECT_EQ(window().size(), small) << "the operator decides about a larger one";
    EXPECT_TRUE(first->availableGeometry().contains(window().frameGeometry()));
}

} // namespace

} // namespace desk::gui
