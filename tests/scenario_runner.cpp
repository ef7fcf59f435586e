#include "support/scenario.h"

#include <exception>
#include <iostream>

/// Runs scenario files; the exit status tells whether all of them went well.
int main(int argument_count, char** arguments) {
    if (argument_count < 2) {
        std::cerr << "usage: scenario_runner FILE...\n";
        return 2;
    }
    int failed = 0;
    try {
        for (int i = 1; i < argument_count; ++i)
            failed += desk::test::run_scenario_file(arguments[i]);
    } catch (const std::exception& e) {
        std::cerr << e.what() << "\n";
        return 2;
    }
    return failed == 0 ? 0 : 1;
}
