#include "output/atomic_file.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <filesystem>

#include "support/temp_folder.h"

namespace kavit {
namespace {

namespace fs = std::filesystem;

class AtomicFile : public testing::Test {
  protected:
    // Every name in the folder; a temporary file left behind would show.
    std::string Names() const {
        std::string names;
        for (const auto& entry : fs::directory_iterator(folder_)) {
            names += entry.path().filename().string() + " ";
        }
        return names;
    }

    TempFolder temp_;
    fs::path folder_ = temp_.Path();
};

TEST_F(AtomicFile, WritesReplacesAndKeepsPermissions) {
    const fs::path file = folder_ / "a.sol";
    EXPECT_EQ(WriteWholeFile(file, std::string("one\0two", 7)), "");
    EXPECT_EQ(temp_.Read("a.sol"), std::string("one\0two", 7));
    const mode_t mask = umask(0);
    umask(mask);
    EXPECT_EQ(static_cast<mode_t>(fs::status(file).permissions()), 0666 & ~mask);

    fs::permissions(file, fs::perms{0740});
    EXPECT_EQ(WriteWholeFile(file, ""), "");
    EXPECT_EQ(temp_.Read("a.sol"), "");
    EXPECT_EQ(fs::status(file).permissions(), fs::perms{0740});
    EXPECT_EQ(Names(), "a.sol ");
    // What a process of the same number left behind is not written into, and nothing is added.
    temp_.Write(".kavit-" + std::to_string(getpid()) + "-0.tmp", "");
    const std::string names = Names();
    EXPECT_EQ(WriteWholeFile(file, "x"), "");
    EXPECT_EQ(Names(), names);
}

TEST_F(AtomicFile, ALinkStaysALink) {
    fs::create_directory(folder_ / "far");
    fs::create_symlink("far/target", folder_ / "one");
    fs::create_symlink("one", folder_ / "two");
    for (const char* content : {"made", "replaced"}) {  // the target is not there at first
        EXPECT_EQ(WriteWholeFile(folder_ / "two", content), "");
        EXPECT_TRUE(fs::is_symlink(folder_ / "one"));
        EXPECT_TRUE(fs::is_symlink(folder_ / "two"));
        EXPECT_EQ(temp_.Read("far/target"), content);
    }
    fs::create_symlink("ring", folder_ / "ring");
    EXPECT_NE(WriteWholeFile(folder_ / "ring", "x"), "");
    // A link to what is no plain file: written through, not replaced.
    ASSERT_EQ(mkfifo((folder_ / "pipe").c_str(), 0600), 0);
    const int reader = open((folder_ / "pipe").c_str(), O_RDONLY | O_NONBLOCK);
    fs::create_symlink("pipe", folder_ / "to-pipe");
    EXPECT_EQ(WriteWholeFile(folder_ / "to-pipe", "x"), "");
    char got = 0;
    EXPECT_EQ(read(reader, &got, 1), 1);
    EXPECT_EQ(got, 'x');
    close(reader);
}

TEST_F(AtomicFile, FailuresNameFileAndReasonAndLeaveNothing) {
    fs::create_directory(folder_ / "folder");
    ASSERT_EQ(WriteWholeFile(folder_ / "file", "old"), "");
    const std::string names = Names();
    const struct {
        fs::path Path;
        const char* Reason;
    } cases[] = {
        {folder_ / "folder", "directory"},
        {folder_ / "new/", "directory"},
        {folder_ / "missing/a.sol", "No such file"},
        {folder_ / "file/a.sol", "Not a directory"},
        {folder_ / std::string(300, 'n'), "too long"},
        {"/dev/full", "No space left"},
        {"", "without a name"},
    };
    for (const auto& [path, reason] : cases) {
        const std::string fault = WriteWholeFile(path, "new");
        EXPECT_NE(fault.find(reason), std::string::npos) << fault;
        EXPECT_NE(fault.find(path.string()), std::string::npos) << fault;
    }
    EXPECT_EQ(Names(), names);
    EXPECT_EQ(temp_.Read("file"), "old");
}

TEST_F(AtomicFile, ADiskThatFillsUpKeepsTheOldFile) {
    const fs::path file = folder_ / "a.sol";
    ASSERT_EQ(WriteWholeFile(file, "old"), "");
    // A limit on the size of files stops the write half-way, as a full disk does.
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit small{4096, limit.rlim_max};
    const auto oldHandler = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &small), 0);
    const std::string fault = WriteWholeFile(file, std::string(100000, 'x'));
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
    std::signal(SIGXFSZ, oldHandler);
    EXPECT_NE(fault.find("a.sol\": File too large"), std::string::npos) << fault;
    EXPECT_EQ(temp_.Read("a.sol"), "old");
    EXPECT_EQ(Names(), "a.sol ");
}

TEST_F(AtomicFile, AKillLeavesTheOldOrTheNewFile) {
    const fs::path file = folder_ / "a.sol";
    const std::string one(200000, '1');
    const std::string two(300000, '2');
    ASSERT_EQ(WriteWholeFile(file, one), "");
    for (int round = 0; round < 20; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            alarm(10);  // should the test itself come to grief
            for (;;) {
                if (!WriteWholeFile(file, two).empty() || !WriteWholeFile(file, one).empty()) {
                    _exit(1);
                }
            }
        }
        usleep(static_cast<useconds_t>(500 + 700 * round));
        kill(child, SIGKILL);
        int status = 0;
        waitpid(child, &status, 0);
        ASSERT_TRUE(WIFSIGNALED(status));
        const std::string content = temp_.Read("a.sol");
        ASSERT_TRUE(content == one || content == two) << content.size();
    }
}

TEST_F(AtomicFile, PermissionsAreRespected) {
    const fs::path locked = folder_ / "locked";
    fs::create_directory(locked);
    ASSERT_EQ(WriteWholeFile(folder_ / "read-only", "old"), "");
    fs::permissions(folder_ / "read-only", fs::perms{0444});
    fs::permissions(locked, fs::perms{0555});
    fs::permissions(folder_, fs::perms{0777});
    constexpr uid_t kNobody = 65534;
    const auto denied = [](const fs::path& file) {
        return WriteWholeFile(file, "x").find("denied") != std::string::npos;
    };
    // Without the rights of an administrator, which the tests may run with.
    EXPECT_EXIT(_exit((geteuid() == 0 && setuid(kNobody) != 0 ? 8 : 0) +
                      (denied(folder_ / "read-only") ? 0 : 1) + (denied(locked / "a.sol") ? 0 : 2) +
                      (WriteWholeFile(folder_ / "other", "x").empty() ? 0 : 4)),
                testing::ExitedWithCode(0), "");
    EXPECT_EQ(temp_.Read("read-only"), "old");
    fs::permissions(locked, fs::perms{0777});
}

TEST_F(AtomicFile, AppendsAtTheEnd) {
    EXPECT_EQ(AppendToFile(folder_ / "log", "a\n"), "");
    EXPECT_EQ(AppendToFile(folder_ / "log", "b\n"), "");
    EXPECT_EQ(temp_.Read("log"), "a\nb\n");
    EXPECT_NE(AppendToFile(folder_, "c\n"), "");
}

}  // namespace
}  // namespace kavit
