// What bears a name is whole, whatever goes wrong on the way.

#include "base/whole_file.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>

#include <csignal>

#include "tests/support/temp_dir.h"

namespace kiva::test {
namespace {

TEST(WholeFile, TakesItsNameAtTheEnd) {
  const TempDir dir;
  const std::string path = dir.write("f", "old");
  chmod(path.c_str(), 0640);
  std::filesystem::create_symlink("f", dir.file("link"));
  {
    WholeFile abandoned(path);
    abandoned.out() << "half";
    EXPECT_EQ(read_text(path), "old");
  }
  EXPECT_EQ(read_text(path), "old");
  WholeFile file(dir.file("link"));
  ASSERT_TRUE(file.opened());
  file.out() << "new";
  EXPECT_TRUE(file.finish());
  EXPECT_EQ(read_text(path), "new");
  EXPECT_TRUE(std::filesystem::is_symlink(dir.file("link")));
  EXPECT_EQ(static_cast<unsigned>(std::filesystem::status(path).permissions()), 0640u);
  EXPECT_FALSE(WholeFile(dir.file("no/such/folder")).opened());
  EXPECT_FALSE(WholeFile(dir.path().string()).opened());
  const auto entries = std::filesystem::directory_iterator(dir.path());
  EXPECT_EQ(std::distance(begin(entries), end(entries)), 2) << "no temporary file stays";
}

TEST(WholeFile, AWriteThatFailsLeavesTheOlderFile) {
  const TempDir dir;
  const std::string path = dir.write("f", "old");
  rlimit before;
  getrlimit(RLIMIT_FSIZE, &before);
  const auto handler = std::signal(SIGXFSZ, SIG_IGN);
  {
    WholeFile file(path);
    const rlimit small{1000, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    file.out() << std::string(100'000, 'x');
    EXPECT_FALSE(file.finish());
  }
  setrlimit(RLIMIT_FSIZE, &before);
  std::signal(SIGXFSZ, handler);
  EXPECT_EQ(read_text(path), "old");

  WholeFile full("/dev/full");
  ASSERT_TRUE(full.opened());
  full.out() << "text";
  EXPECT_FALSE(full.finish());
}

}  // namespace
}  // namespace kiva::test
