// Every file of the corpus through the targets of coverage-guided fuzzing.

#include <gtest/gtest.h>

#include <filesystem>
#include <functional>

#include "fuzz/reader_targets.h"
#include "support/levels.h"

namespace kavit::test {
namespace {

TEST(FuzzReaders, CorpusHolds) {
    const struct {
        const char* Folder;
        std::function<void(std::string_view)> Target;
    } targets[] = {{"level_file", FuzzLevelFile},
                   {"pasted_text", FuzzPastedText},
                   {"collection", FuzzCollection},
                   {"settings_file", FuzzSettingsFile}};
    for (const auto& [folder, target] : targets) {
        int files = 0;
        for (const auto& entry :
             std::filesystem::directory_iterator(std::string(KAVIT_CORPUS_FOLDER "/") + folder)) {
            const std::string bytes = ReadWholeFile(entry.path().string());
            EXPECT_NO_THROW(target(bytes)) << entry.path();
            files += bytes.empty() ? 0 : 1;  // one that can't be read would be empty, too
        }
        EXPECT_GE(files, 5) << folder;
    }
}

}  // namespace
}  // namespace kavit::test
