// Runs a target on the fixed corpus only: for compilers without libFuzzer, and to measure the corpus's coverage.

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int main(int count, char** words) {
    if (count != 2) {
        std::cerr << "usage: " << words[0] << " CORPUS\n";
        return 2;
    }
    int inputs = 0;
    for (const auto& entry : std::filesystem::directory_iterator(words[1])) {
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string input{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
        ++inputs;
    }
    std::cout << inputs << " inputs\n";
    return inputs == 0 ? 1 : 0;
}
