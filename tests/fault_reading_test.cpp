// Input that breaks off or does not end.

#include <gtest/gtest.h>

#include <filesystem>
#include <istream>
#include <streambuf>

#include "app/model/settings_file.h"
#include "level/level_reader.h"
#include "support/temp_folder.h"

namespace kavit::test {
namespace {

// Bytes of a file on a disk that fails behind them.
class FailingDisk : public std::streambuf {
  public:
    explicit FailingDisk(std::string bytes) : bytes_(std::move(bytes)) {
        setg(bytes_.data(), bytes_.data(), bytes_.data() + bytes_.size());
    }

  protected:
    int_type underflow() override { throw std::ios_base::failure("disk"); }

  private:
    std::string bytes_;
};

// Half a level is no level, even where it could be one.
TEST(FaultReading, ADiskThatFailsOnTheWay) {
    const std::string level = "title\n#####\n#@$.#\n#####\n";
    for (std::size_t bytes = 0; bytes <= level.size(); ++bytes) {
        FailingDisk disk(level.substr(0, bytes));
        std::istream stream(&disk);
        Board board;
        board.Cell[7] = kBox;
        const ReadReply reply = ReadLevelStream(stream, board, {});
        EXPECT_EQ(reply.Code, Result::CantOpen) << bytes;
        EXPECT_NE(reply.Reason, "") << bytes;
        EXPECT_EQ(board.Cell, Board{}.Cell) << bytes;
    }
}

TEST(FaultReading, AStreamThatIsBrokenFromTheStart) {
    std::istream stream(nullptr);
    Board board;
    board.Cell[7] = kBox;
    EXPECT_EQ(ReadLevelStream(stream, board, {}).Code, Result::CantOpen);
    EXPECT_EQ(board.Cell, Board{}.Cell);
}

// Settings are one short line: what is longer is refused instead of cut.
TEST(FaultReading, SettingsThatCantBeRead) {
    const TempFolder folder;
    const std::string line = "10 8 300 1 0 ";
    const struct {
        std::string Text;
        bool Holds;
    } cases[] = {
        {line + "0\r\n", true},
        {std::string(4000, ' ') + line + "0", true},
        {std::string(4096 - line.size() - 1, ' ') + line + "15", false},  // cut, it would be 1
        {std::string(100000, '1'), false},
    };
    for (const auto& c : cases) {
        const SettingsReply reply = ReadSettings(folder.Write("Kavit.ini", c.Text));
        EXPECT_EQ(reply.Fault.empty(), c.Holds) << reply.Fault << " " << c.Text.size();
        EXPECT_EQ(reply.Values.Fields.NumPos, c.Holds ? 10 : Settings{}.Fields.NumPos);
        EXPECT_TRUE(c.Holds || reply.Fault.find("Kavit.ini") != std::string::npos);
    }
    const SettingsReply reply = ReadSettings(folder.Path());
    EXPECT_NE(reply.Fault.find("no plain file"), std::string::npos) << reply.Fault;
    EXPECT_EQ(ReadSettings(folder.Path("missing")).Fault, "");
    // A plain file, as it seems, whose first byte can't be read.
    EXPECT_EQ(ReadSettings("/proc/self/mem").Fault,
              "The settings file /proc/self/mem can't be read: Input/output error");
}

}  // namespace
}  // namespace kavit::test
