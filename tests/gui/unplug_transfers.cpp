#include "unplug_bench.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QTest>
#include <QTreeWidget>

#include <utility>

namespace desk::gui {

namespace {

using expectation = std::function<void(unplug_bench&)>;
using after = pull_moment::after;

/// Lists the moments in the conversation of one transfer.
class conversation {
public:
    conversation(std::vector<pulled_transfer>& all, transfer what) : all_(all), what_(std::move(what)) {}

    /// A command and its answer; if the cable is pulled before their end, the desk shows `expect`.
    conversation& exchange(const std::string& name, const expectation& expect, std::size_t answer_size = 6) {
        add(name + "_not_begun", {after::answered, received_}, expect);
        add(name + "_half_sent", {after::received, received_ + 3}, expect);
        add(name + "_unanswered", {after::received, received_ + 6}, expect);
        add(name + "_half_answered", {after::sent, sent_ + answer_size / 2}, expect);
        received_ += 6;
        sent_ += answer_size;
        return *this;
    }

    /// Skips similar exchanges.
    conversation& pass(std::size_t exchanges) {
        received_ += 6 * exchanges;
        sent_ += 6 * exchanges;
        return *this;
    }

    conversation& raw_from_generator(const expectation& expect) {
        add("reading_not_begun", {after::sent, sent_}, expect);
        for (const std::size_t part : {1U, 128U, 255U})
            add("reading_after_" + std::to_string(part), {after::sent, sent_ + part}, expect);
        return *this;
    }

    conversation& raw_from_desk(std::size_t size, const expectation& expect) {
        add("writing_not_begun", {after::answered, received_}, expect);
        for (const std::size_t part : {std::size_t{1}, size / 2, size - 1})
            add("writing_after_" + std::to_string(part), {after::received, received_ + part}, expect);
        add("writing_done", {after::received, received_ + size}, expect);
        received_ += size;
        return *this;
    }

    /// The generator's result, which it sends unasked.
    conversation& result(const expectation& expect) {
        add("result_half_sent", {after::sent, sent_ + 3}, expect);
        sent_ += 6;
        return *this;
    }

    /// Pulls the cable after a complete transfer, then starts the same transfer again.
    conversation& after_the_end(const expectation& expect) {
        const transfer well = what_;
        what_.act = [act = well.act](unplug_bench& b) {
            act(b);
            EXPECT_EQ(b.box_texts(), QStringList());
            b.cable.pull();
            act(b);
        };
        add("again_behind_its_end", {}, expect);
        what_ = well;
        return *this;
    }

    conversation& taking_minutes(const expectation& expect) {
        for (const std::size_t part : {0U, 3U})
            add("result_after_" + std::to_string(part), {after::sent, sent_ + part}, expect);
        (all_.end() - 1)->takes_minutes = (all_.end() - 2)->takes_minutes = true;
        return *this;
    }

private:
    void add(const std::string& phase, pull_moment moment, const expectation& expect) {
        all_.push_back({what_.name + "_" + phase, what_, moment, expect});
    }

    std::vector<pulled_transfer>& all_;
    transfer what_;
    std::size_t received_ = 0;
    std::size_t sent_ = 0;
};

const QStringList nothing;
const QStringList link_error = {"Link Error !"};

std::function<void(unplug_bench&)> click(const QString& button) {
    return [button](unplug_bench& b) { b.at().click(button); };
}

std::function<void(unplug_bench&)> row(const QString& view, const QString& list, int number) {
    return [=](unplug_bench& b) { b.choose_row(view, list, number); };
}

/// Boxes report the failure, and this button is enabled again.
expectation boxes(const QStringList& texts, const QString& button) {
    return [=](unplug_bench& b) {
        EXPECT_EQ(b.box_texts(), texts);
        b.expect_resting(button);
    };
}

/// A label reports the failure, without a box; this button is enabled again.
expectation label(const QString& name, const QString& button) {
    return [=](unplug_bench& b) {
        EXPECT_EQ(b.at().text(name), "Link Error");
        boxes(nothing, button)(b);
    };
}

/// The first status label that could not be read reports the failure, and those after it are empty.
expectation status(int first, const QString& button) {
    return [=](unplug_bench& b) {
        const QStringList labels = {"lab_timing", "lab_pattern", "lab_out", "lab_hdcp"};
        label(labels[first], button)(b);
        for (int i = 0; i < labels.size(); ++i)
            EXPECT_EQ(b.at().text(labels[i]).isEmpty(), i > first) << labels[i].toStdString();
        b.expect_resting("cmd_refresh");
    };
}

expectation dark(const QString& group, int count, const expectation& besides) {
    return [=](unplug_bench& b) {
        EXPECT_EQ(b.lit(group, count), -1);
        besides(b);
    };
}

void add_main_window(std::vector<pulled_transfer>& all) {
    const auto about = [](unplug_bench& b) {
        EXPECT_EQ(b.at().text("lab_about").remove('\r'), "Application S/W is v1.3G\nLinking VELOTRACE ...\n"
                                                         "Link Error !\nHardware F/W is unknown.");
        EXPECT_TRUE(b.at().find("cmd_about").isEnabled());
        EXPECT_TRUE(b.at().find("cmd_about_ok").isEnabled());
        EXPECT_EQ(b.box_texts(), nothing);
        b.at().click("cmd_about_ok");
    };
    const auto ask = [](unplug_bench& b) {
        if (b.at().is_shown("fra_about")) b.at().click("cmd_about_ok");
        b.at().click("cmd_about");
    };
    conversation(all, {"about", [](unplug_bench&) {}, ask}).exchange("VER", about).after_the_end(about);

    const auto pull_and = [](const QString& button) {
        return [button](unplug_bench& b) {
            b.cable.pull();
            b.at().click(button);
        };
    };
    const auto disconnected = [](const QStringList& texts) {
        return [texts](unplug_bench& b) {
            boxes(texts, "cmd_conn")(b);
            EXPECT_EQ(b.color_of("cmd_disconn"), QColor(255, 0, 0));
            b.choose_row("cmd_timing", "lstv_timing", 7);
            b.at().click("cmd_run");
            EXPECT_EQ(b.at().text("lab_timing"), "Link Error");
            boxes({"RS232 is disconnected !"}, "cmd_run")(b);
        };
    };
    const auto prepare = [](unplug_bench&) {};
    all.push_back({"connect_to_nothing",
                   {"", prepare, pull_and("cmd_conn")},
                   {},
                   disconnected({"RS232 can not work on COM 1: !"})});
    all.push_back({"disconnect_from_nothing", {"", prepare, pull_and("cmd_disconn")}, {}, disconnected({})});
    const auto connect_and_pull = [](unplug_bench& b) {
        b.at().click("cmd_conn");
        b.cable.pull();
    };
    const auto connected = [](unplug_bench& b) {
        EXPECT_EQ(b.color_of("cmd_conn"), QColor(0, 255, 0)) << "nothing has been sent yet";
        b.choose_row("cmd_timing", "lstv_timing", 7);
        b.at().click("cmd_run");
        label("lab_timing", "cmd_run")(b);
    };
    all.push_back({"pulled_behind_connect", {"", prepare, connect_and_pull}, {}, connected});
}

void add_set(std::vector<pulled_transfer>& all) {
    const auto timing = label("lab_timing", "cmd_run");
    conversation(all, {"set_timing", row("cmd_timing", "lstv_timing", 7), click("cmd_run")})
        .exchange("TIM", timing)
        .after_the_end(timing);
    const auto pattern = label("lab_pattern", "cmd_run");
    conversation(all, {"set_pattern", row("cmd_pattern", "lstv_pattern", 7), click("cmd_run")})
        .exchange("PAT", pattern)
        .after_the_end(pattern);

    const auto favorites = [](unplug_bench& b) {
        boxes(link_error, "cmd_run")(b);
        b.expect_resting("cmd_download");
    };
    const auto checked = [](const QString& view, const QString& list) {
        return [=](unplug_bench& b) {
            b.at().click(view);
            b.at().click_check(list, 2);
        };
    };
    conversation(all, {"set_favorite_timings", checked("cmd_fav_timing", "lstv_timing"), click("cmd_run")})
        .exchange("row_1", favorites)
        .pass(38)
        .exchange("row_40", favorites)
        .pass(38)
        .exchange("row_79", favorites)
        .after_the_end(favorites);
    conversation(all, {"set_favorite_patterns", checked("cmd_fav_pattern", "lstv_pattern"), click("cmd_run")})
        .exchange("row_1", favorites)
        .pass(62)
        .exchange("row_64", favorites);
    const auto second_unexamined = boxes(nothing, "cmd_run");
    conversation(all, {"set_no_favorite_timing", click("cmd_fav_timing"), click("cmd_run")})
        .pass(79)
        .exchange("row_1", favorites)
        .exchange("row_23", second_unexamined);
    conversation(all, {"set_no_favorite_pattern", click("cmd_fav_pattern"), click("cmd_run")})
        .pass(64)
        .exchange("row_1", favorites);
    conversation(all, {"set_autorun", click("cmd_auto"), click("cmd_run")})
        .exchange("first_ATN", favorites)
        .pass(64)
        .exchange("ATT_of_row_17", favorites)
        .pass(61)
        .exchange("last_ATI", favorites);
}

void add_panel(std::vector<pulled_transfer>& all) {
    const auto panel = click("cmd_setup");
    const auto out = dark("cmd_out", 4, label("lab_out", "cmd_out_1"));
    conversation(all, {"output_format", panel, click("cmd_out_1")}).exchange("OUT", out).after_the_end(out);
    const auto hdcp = dark("cmd_hdcp", 2, label("lab_hdcp", "cmd_hdcp_1"));
    conversation(all, {"hdcp", panel, click("cmd_hdcp_1")}).exchange("HDC", hdcp).after_the_end(hdcp);
    const auto source = dark("cmd_asc", 3, boxes(nothing, "cmd_asc_0"));
    const auto channels = [](unplug_bench& b) {
        EXPECT_EQ(b.box_texts(), link_error);
        EXPECT_EQ(b.lit("cmd_asc", 3), 0);
        EXPECT_EQ(b.lit("cmd_lpcm", 3), -1) << "as before";
        EXPECT_TRUE(b.at().find("cmd_asc_0").isEnabled());
    };
    conversation(all, {"audio_source", panel, click("cmd_asc_0")}).exchange("ASC", source).exchange("PCM", channels);
    struct group {
        QString name;
        int count;
    };
    for (const group& g : {group{"cmd_lpcm", 3}, group{"cmd_csc", 3}, group{"cmd_deep", 3}, group{"cmd_auto_go", 2},
                           group{"cmd_fav", 2}}) {
        const auto silent = dark(g.name, g.count, boxes(nothing, g.name + "_1"));
        conversation(all, {g.name.toStdString(), panel, click(g.name + "_1")})
            .exchange("command", silent)
            .after_the_end(silent);
    }
    const auto reset = boxes(link_error, "cmd_reset");
    conversation(all, {"reset", panel, click("cmd_reset")}).exchange("RST", reset).after_the_end(reset);

    const auto failed = boxes(link_error, "cmd_download");
    conversation(all, {"download_of_panel", panel, click("cmd_download")})
        .exchange("TIM", status(0, "cmd_download"))
        .exchange("PAT", status(1, "cmd_download"))
        .exchange("OUT", status(2, "cmd_download"))
        .exchange("HDC", dark("cmd_hdcp", 2, status(3, "cmd_download")))
        .exchange("ASC", failed)
        .exchange("PCM", failed)
        .exchange("CSC", failed)
        .exchange("DEE", failed)
        .exchange("ATO", failed)
        .exchange("FAV", failed)
        .after_the_end(status(0, "cmd_download"));
    conversation(all, {"refresh", [](unplug_bench&) {}, click("cmd_refresh")})
        .exchange("TIM", status(0, "cmd_refresh"))
        .exchange("PAT", status(1, "cmd_refresh"))
        .exchange("OUT", status(2, "cmd_refresh"))
        .exchange("HDC", status(3, "cmd_refresh"))
        .after_the_end(status(0, "cmd_refresh"));
}

void add_download(std::vector<pulled_transfer>& all) {
    const auto failed = boxes(link_error, "cmd_download");
    const auto dead_colors = [failed](unplug_bench& b) {
        failed(b);
        for (const char* control : {"hsr_color_setting_0", "txt_color_setting_3"})
            EXPECT_FALSE(b.at().find(control).isEnabled()) << control;
    };
    const auto colors = row("cmd_pattern", "lstv_pattern", 13);
    conversation(all, {"download_of_colours", colors, click("cmd_download")})
        .exchange("CSC", dead_colors)
        .exchange("CRR", dead_colors)
        .exchange("CRG", dead_colors)
        .exchange("CRB", dead_colors)
        .after_the_end(failed);
    const auto downloaded = [colors](unplug_bench& b) {
        colors(b);
        b.at().click("cmd_download");
    };
    const auto move = [](unplug_bench& b) { b.at().press_key("hsr_color_setting_0", Qt::Key_PageUp); };
    const auto moved = [](unplug_bench& b) {
        EXPECT_EQ(b.at().find<QScrollBar>("hsr_color_setting_0").value(), 148) << "a large step";
        EXPECT_EQ(b.at().text("txt_color_setting_0"), "148");
        EXPECT_EQ(b.box_texts(), nothing) << "the desk does not wait for an answer";
    };
    conversation(all, {"colour", downloaded, move}).exchange("CRR", moved);

    conversation(all, {"download_of_favorite_timings", click("cmd_fav_timing"), click("cmd_download")})
        .exchange("FT", failed, 79 * 6)
        .after_the_end(failed);
    conversation(all, {"download_of_favorite_patterns", click("cmd_fav_pattern"), click("cmd_download")})
        .exchange("FP", failed, 64 * 6)
        .after_the_end(failed);
    const auto same_list = [failed](unplug_bench& b) {
        failed(b);
        EXPECT_EQ(b.at().find<QTreeWidget>("lstv_auto").topLevelItemCount(), 32);
    };
    conversation(all, {"download_of_autorun", click("cmd_auto"), click("cmd_download")})
        .exchange("ATS", same_list, 768)
        .after_the_end(same_list);

    const auto motion = [](unplug_bench& b) {
        b.choose_row("cmd_pattern", "lstv_pattern", 41);
        b.at().type("txt_motion_str", "MINE");
    };
    const auto same_text = [failed](unplug_bench& b) {
        failed(b);
        EXPECT_EQ(b.at().text("txt_motion_str"), "MINE");
    };
    conversation(all, {"download_of_custom_string", motion, click("cmd_download")})
        .exchange("MOT", same_text, 18)
        .after_the_end(failed);
    const auto stays_red = [](unplug_bench& b) {
        EXPECT_EQ(b.box_texts(), QStringList{"Link Error"});
        EXPECT_FALSE(b.at().find("cmd_upload").isEnabled());
        EXPECT_EQ(b.color_of("cmd_upload"), QColor(255, 0, 0));
    };
    conversation(all, {"upload_of_custom_string", motion, click("cmd_upload")})
        .exchange("MOT", stays_red)
        .raw_from_desk(12, boxes(nothing, "cmd_upload"))
        .after_the_end(stays_red);
}

/// The text of the result frame, and its mark.
expectation frame(const QString& text, const QString& button) {
    return [=](unplug_bench& b) {
        EXPECT_EQ(b.at().text("txt_msg"), text);
        EXPECT_EQ(b.at().text("lab_pass"), "FAIL");
        EXPECT_TRUE(b.at().find("cmd_ok").isEnabled());
        boxes(nothing, button)(b);
    };
}

/// The window of the READ side ends with this line.
expectation read_window(const QString& line, const expectation& besides) {
    return [=](unplug_bench& b) {
        EXPECT_TRUE(b.at().text("txt_read").endsWith(line)) << b.at().text("txt_read").toStdString();
        besides(b);
    };
}

std::function<void(unplug_bench&)> click_without_frame(const QString& button) {
    return [button](unplug_bench& b) {
        if (b.at().is_shown("fra_compare")) b.at().click("cmd_ok");
        b.at().click(button);
    };
}

const QString no_link = "\nLink Error !\n";
const QString no_data = "\nTimeout ! Read fail !";

void add_sink(std::vector<pulled_transfer>& all) {
    const auto reading = [](const QString& line) {
        return [line](unplug_bench& b) {
            EXPECT_EQ(b.at().text("txt_read"), "Reading HDMI/DVI-OUT's edid ..." + line);
            EXPECT_FALSE(b.at().find("cmd_read_translate").isEnabled());
            EXPECT_FALSE(b.at().find("cmd_sum_read").isEnabled());
            boxes(nothing, "cmd_read")(b);
        };
    };
    conversation(all, {"read", click("cmd_edid"), click("cmd_read")})
        .exchange("ESC", reading(no_link))
        .exchange("ERD", reading(no_link))
        .raw_from_generator(reading(no_data))
        .after_the_end(reading(no_link));

    const auto open = [](unplug_bench& b) { b.open_edid(); };
    const auto unwritten = frame("Writing WRITE data ...\nLink Error !", "cmd_write");
    const auto half_written = frame("Writing WRITE data ...\nWRITE timeout error !\n", "cmd_write");
    conversation(all, {"write", open, click_without_frame("cmd_write")})
        .exchange("ESC", unwritten)
        .exchange("EWR", unwritten)
        .raw_from_desk(256, half_written)
        .result(half_written)
        .after_the_end(unwritten);

    const auto unread = frame("Reading sink's edid ...\nRead sink's edid fail !\n", "cmd_verify");
    conversation(all, {"verify", open, click_without_frame("cmd_verify")})
        .exchange("ESC", read_window(no_link, unread))
        .exchange("ERD", read_window(no_link, unread))
        .raw_from_generator(read_window(no_data, unread))
        .after_the_end(read_window(no_link, unread));

    const auto erase = [](unplug_bench& b) {
        click_without_frame("cmd_erase")(b);
        EXPECT_EQ(b.box_texts(), QStringList{"Are you sure to erase sink's EDID ?"});
    };
    const auto not_erased = frame("Erasing sink's edid ...\nLink Error !\n", "cmd_erase");
    conversation(all, {"erase", click("cmd_edid"), erase})
        .exchange("ESC", not_erased)
        .exchange("ERS", not_erased)
        .taking_minutes(frame("Erasing sink's edid ...\nTimeout Error !", "cmd_erase"))
        .after_the_end(not_erased);
}

void add_automatic_run(std::vector<pulled_transfer>& all) {
    const auto shows = [](const QString& text, const QString& mark) {
        return [=](unplug_bench& b) {
            EXPECT_EQ(b.auto_msg, text);
            EXPECT_EQ(b.auto_mark, mark);
            EXPECT_TRUE(b.auto_usable) << "RUN and CANCEL are enabled";
            boxes(nothing, "cmd_write")(b);
        };
    };
    const auto unwritten = shows("Writing WRITE data ...\nLink Error !\n", "FAIL");
    const auto half_written = shows("Writing WRITE data ...\nWRITE timeout error !\n", "FAIL");
    // the mark stays that of the successful WRITE
    const auto unread = shows("Writing WRITE data ...\nEWR002 Write completely .\nReading sink's edid ...\n"
                              "Read sink's edid fail !\n",
                              "PASS");
    conversation(
        all, {"automatic_run", [](unplug_bench& b) { b.open_edid(); }, [](unplug_bench& b) { b.run_automatically(); }})
        .exchange("ESC_to_write", unwritten)
        .exchange("EWR", unwritten)
        .raw_from_desk(256, half_written)
        .result(half_written)
        .exchange("ESC_to_verify", read_window(no_link, unread))
        .exchange("ERD", read_window(no_link, unread))
        .raw_from_generator(read_window(no_data, unread))
        .after_the_end(unwritten);
}

} // namespace

std::vector<pulled_transfer> all_pulled_transfers() {
    std::vector<pulled_transfer> all;
    add_main_window(all);
    add_set(all);
    add_panel(all);
    add_download(all);
    add_sink(all);
    add_automatic_run(all);
    return all;
}

} // namespace desk::gui
