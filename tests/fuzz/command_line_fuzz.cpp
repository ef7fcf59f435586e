// Arguments of edid_report and velotrace_sim, each terminated by a zero byte.

#include "batch/input_files.h"
#include "batch/options.h"
#include "desk_under_fuzz.h"
#include "fuzz_input.h"
#include "generator/sim_options.h"
#include "runtime/text.h"

#include <map>
#include <utility>

namespace {

using namespace desk;

void start_edid_report(const std::vector<std::string>& words) {
    batch::options wanted;
    try {
        wanted = batch::options_of(words);
    } catch (const batch::usage_error& e) {
        fuzz::demand(*e.what() != '\0', "a bad command line is explained");
        return;
    }
    fuzz::demand(wanted.help || wanted.version || !wanted.inputs.empty(), "there is something to do");
    fuzz::demand(wanted.jobs <= 1024, "at most as many jobs as allowed");
}

/// Names are not looked up here: a missing file is reported when it is read.
void find_files(std::vector<std::string> names) {
    for (std::string& name : names)
        name.insert(0, "no folder/");
    const batch::input_files found = batch::find_input_files(names);
    fuzz::demand(found.files.size() == names.size() && found.problems.empty(), "each name is a file");
    std::map<std::string, std::pair<int, bool>> reports;
    for (const batch::input_file& file : found.files) {
        auto& [count, shared] = reports[lower_case(found.report_name(file))];
        ++count;
        shared = shared || file.shares_name;
        fuzz::demand(!found.path_of(file).empty(), "a file has its path");
        kind_by_extension(file.name);
    }
    for (const auto& [name, report] : reports)
        fuzz::demand((report.first > 1) == report.second, "a file is marked exactly if its report shares its name");
}

void start_simulator(const std::vector<std::string>& words) {
    fuzz::ends_well([&] {
        const sim_options wanted = sim_options_of(words);
        fuzz::demand(wanted.timings >= 1 && wanted.timings <= largest_catalogue, "the number of timings is in range");
        fuzz::demand(wanted.patterns >= 1 && wanted.patterns <= largest_catalogue,
                     "the number of patterns is in range");
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::vector<std::string> words = fuzz::split(fuzz::text_of(data, size), '\0');
    start_edid_report(words);
    find_files(words);
    start_simulator(words);
    return 0;
}
