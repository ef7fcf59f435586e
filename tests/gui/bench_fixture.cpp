#include "bench_fixture.h"

#include "simulator_program.h"

#include <QApplication>
#include <QFile>
#include <QTest>
#include <QTimer>

namespace desk::gui {

bench::bench() {
    // after a program has ended in this process, Qt refuses every further dialog
    QTimer::singleShot(0, qApp, [] { QApplication::quit(); });
    QApplication::exec();
    for (const char* name : {"marlo_rs232.ini", "timing_pattern.ini"}) {
        QFile::copy(QString(FIRST_FILES) + "/" + name, directory.filePath(name));
        QFile::setPermissions(directory.filePath(name), QFile::ReadOwner | QFile::WriteOwner);
    }
    program = std::make_unique<qt::desk_program>(std::filesystem::path(directory.path().toStdString()));
}

void bench::put_file(const QString& name, const QByteArray& content) const {
    QFile f(directory.filePath(name));
    ASSERT_TRUE(f.open(QFile::WriteOnly | QFile::Truncate));
    f.write(content);
}

void bench::remove_file(const QString& name) const { QFile::remove(directory.filePath(name)); }

QByteArray bench::file(const QString& name) const {
    QFile f(directory.filePath(name));
    return f.open(QFile::ReadOnly) ? f.readAll() : QByteArray();
}

void bench::plug_generator() { generator.emplace(simulator_for(com1())); }

void bench::start() {
    ASSERT_TRUE(program->start());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&program->main_window()));
}

} // namespace desk::gui
