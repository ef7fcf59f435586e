// The settings file is all that the desk keeps between runs.

#include "bench_fixture.h"

#include <QDirIterator>
#include <QFileDialog>
#include <QMessageBox>

namespace desk::gui {

namespace {

class two_runs : public bench {
protected:
    two_runs() {
        plug_generator();
        for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME"})
            qunsetenv(variable);
        qputenv("HOME", home.path().toLocal8Bit());
    }

    void start_again() {
        program.reset();
        program = std::make_unique<qt::desk_program>(std::filesystem::path(directory.path().toStdString()));
        start();
    }

    QStringList files_at_home() const {
        QStringList found;
        QDirIterator all(home.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
        while (all.hasNext())
            found << all.next().mid(home.path().size());
        return found;
    }

    QTemporaryDir home;
};

TEST_F(two_runs, leave_no_file_in_the_home_folder_and_no_window_position) {
    start();
    const QRect first = program->main_window().geometry();
    const QByteArray settings = file("marlo_rs232.ini");
    program->main_window().move(first.topLeft() + QPoint(40, 30));
    const ui_driver ui = driver();
    ui.click("cmd_edid");
    std::vector<seen_dialog> dialogs;
    answer_next_file_dialog(dialogs, directory.filePath("marlo_rs232.ini"));
    std::vector<seen_box> boxes;
    answer_next_box(boxes, QMessageBox::Ok);
    ui.when([&] { return boxes.size() == 1; }, [&] { answer_next_box(boxes, QMessageBox::Ok); });
    ui.click("cmd_load");
    ASSERT_EQ(dialogs.size(), 1U);
    start_again();
    EXPECT_EQ(program->main_window().geometry(), first);
    EXPECT_TRUE(driver().is_shown("img_logo"));
    EXPECT_EQ(files_at_home(), QStringList());
}

} // namespace

} // namespace desk::gui
