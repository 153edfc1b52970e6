// The compiler's command line.

#include <gmock/gmock.h>

#include "tests/support/temp_dir.h"
#include "tests/system/program.h"

namespace kiva::test {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string with_type(const std::string& name, const std::string& type) {
  return "module: " + name + " 0 1\ninput: i:" + type +
         " ;\nconnexion: S R T;\nequation_def:\n0\nexpressions:\nend:\n"
         "data:\ntype:\n" +
         type + ";\nmethod:\nconstant:\n" + type + " top;\nend:\n";
}

TEST(Tarn, WritesAServerForEachFile) {
  const TempDir dir;
  const std::string a = dir.write("a.zuc", with_type("first", "int"));
  const std::string b = dir.write("b.zuc", with_type("second", "real"));
  const std::string folder = dir.path().string();
  ProgramRun run = run_program("tarn", "--kiva -d " + folder + " " + a + " " + b);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.err, "");
  EXPECT_EQ(run.out, folder + "/kiva_first.cc\n" + folder + "/kiva_second.cc\n");
  EXPECT_THAT(read_text(dir.file("kiva_first.cc")), HasSubstr("kiva_data_user_int.h"));
  const std::string second = read_text(dir.file("kiva_second.cc"));
  EXPECT_THAT(second, HasSubstr("real_to_string (::top)"));
  EXPECT_THAT(second, Not(HasSubstr("int_to_string"))) << "the first file's types are not its own";

  run = run_program("tarn", "-q --kiva -d " + folder + " " + a);
  EXPECT_EQ(run.out, "");
  run = run_program("tarn", "-d " + folder + " " + a);
  EXPECT_EQ(run.out, folder + "/first.zuc\n");
}

TEST(Tarn, RefusesWithOneLineAndAStatus) {
  const TempDir dir;
  const std::string good = dir.write("good.zuc", with_type("good", "int"));
  const std::string broken = dir.write("broken.zuc", "module: m 0 1\nend:\n");
  const std::string nameless = dir.write("nameless.zuc", with_type("nameless", "a.b"));
  const std::string into = "--kiva -d " + dir.path().string() + " ";

  ProgramRun run = run_program("tarn", into + dir.file("missing.zuc") + " " + good);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, testing::StartsWith("tarn: " + dir.file("missing.zuc") + ": "));
  EXPECT_THAT(run.out, HasSubstr("kiva_good.cc")) << "the other files are still written";
  run = run_program("tarn", into + broken);
  EXPECT_EQ(run.status, 1);
  EXPECT_THAT(run.err, HasSubstr("tarn: " + broken + ":2: syntax error"));
  run = run_program("tarn", into + nameless);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "tarn: " + nameless +
                         ": IllegalOperationException: Module::save_kiva_code: no name for the "
                         "user's C++ code: a.b\n");
  std::filesystem::remove(dir.file("kiva_good.cc"));
  std::filesystem::create_directory(dir.file("kiva_good.cc"));
  run = run_program("tarn", into + good);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.err, "Cannot open kiva file:" + dir.file("kiva_good.cc") + "\n");

  for (const std::string& wrong : {std::string(), "--nonsense " + good, dir.file("m.txt"),
                                   "--kiva -d " + dir.file("nowhere") + " " + good}) {
    run = run_program("tarn", wrong);
    EXPECT_EQ(run.status, 2) << wrong;
    EXPECT_EQ(run.out, "");
  }
  for (const char* asked : {"--help", "--version"}) {
    run = run_program("tarn", asked);
    EXPECT_EQ(run.status, 0);
    EXPECT_THAT(run.out, HasSubstr("tarn"));
  }
}

}  // namespace
}  // namespace kiva::test
