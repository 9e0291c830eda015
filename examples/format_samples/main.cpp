// Writes the examples on the pages of docs/formats anew.

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "pages.h"

int main(int argc, char** argv) {
    if (argc != 2 || !std::filesystem::is_directory(argv[1])) {
        std::fputs("usage: format_samples FOLDER-OF-PAGES\n", stderr);
        return 1;
    }
    std::set<std::string> shown;
    for (const auto& entry : std::filesystem::directory_iterator(argv[1])) {
        std::stringstream page;
        page << std::ifstream(entry.path(), std::ios::binary).rdbuf();
        std::ofstream(entry.path(), std::ios::binary) << RenewedPage(page.str(), shown);
    }
    std::printf("%zu examples\n", shown.size());
}
