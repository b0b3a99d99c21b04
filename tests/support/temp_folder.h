#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>
#include <string_view>

// A folder of a test's own, gone with it.
class TempFolder {
  public:
    TempFolder() {
        std::string name = (std::filesystem::temp_directory_path() / "kavit_test_XXXXXX").string();
        if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
        path_ = name;
    }
    ~TempFolder() {
        std::error_code error;
        std::filesystem::remove_all(path_, error);
    }
    TempFolder(const TempFolder&) = delete;
    TempFolder& operator=(const TempFolder&) = delete;

    [[nodiscard]] std::string Path(std::string_view name = "") const {
        return name.empty() ? path_.string() : (path_ / name).string();
    }
    // Writes a file and answers its full name.
    std::string Write(std::string_view name, std::string_view text) const {
        std::ofstream(Path(name), std::ios::binary) << text;
        return Path(name);
    }
    // All that a file holds; "" when there is none.
    [[nodiscard]] std::string Read(std::string_view name) const {
        std::ifstream file(Path(name), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

  private:
    std::filesystem::path path_;
};
