// Nothing is lost by closing: unsaved work asks once, and is there again after a crash.

#include "SIMULATOR_ZUC/recovery.h"

#include <QFile>

#include "SIMULATOR_ZUC/time_control.h"
#include "tests/window/window_test.h"

namespace kiva::test {
namespace {

class UnsavedWork : public WindowTest {
 protected:
  UnsavedWork() {
    dialogs().ask_unsaved = [this](QWidget*, const QString&) {
      ++asked;
      return answer;
    };
    dialogs().ask_whether = [this](QWidget*, const QString&) {
      ++offered;
      return take_up;
    };
    dialogs().ask_save = [this](QWidget*, const QString&, const QString&) { return save_as; };
  }
  void run(int instants) {
    for (int i = 0; i < instants; ++i) press_go();
  }
  long instants() const { return window->time()->recording().branch(0).last; }
  int asked = 0, offered = 0;
  Unsaved answer = Unsaved::cancel;
  bool take_up = true;
  QString save_as;
};

TEST_F(UnsavedWork, AsksOnceWhenTheWindowCloses) {
  open(example("counter"));
  EXPECT_TRUE(window->close());
  EXPECT_EQ(asked, 0) << "nothing was done";
  window->show();
  run(2);
  EXPECT_FALSE(window->close());
  save_as = folder.filePath("a.kivasession");
  answer = Unsaved::save;
  EXPECT_TRUE(window->close());
  EXPECT_EQ(asked, 2);
  EXPECT_TRUE(window->close()) << "it is saved";
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(window->time()->open(save_as), "");
  EXPECT_EQ(instants(), 2);
  run(1);
  answer = Unsaved::cancel;
  EXPECT_FALSE(window->open_file(QString::fromStdString(example("toggle"))));
  EXPECT_EQ(instants(), 3) << "the run is as it was";
  answer = Unsaved::discard;
  EXPECT_TRUE(window->open_file(QString::fromStdString(example("toggle"))));
}

TEST_F(UnsavedWork, IsThereAgainAfterACrash) {
  const std::string module = write("m.zuc", wide_module(2));
  for (const bool wanted : {true, false}) {
    take_up = wanted;
    open(module);
    click_row(0);
    pick(debugger()->one);
    run(3);
    window->time()->mark("here");
    window->recovery()->keep();
    const QString file = window->recovery()->file();
    EXPECT_FALSE(Recovery(window->time(), QString::fromStdString(module)).found())
        << "a second process leaves it alone";
    window.reset();  // no close
    EXPECT_TRUE(QFile::exists(file));
    offered = 0;
    open(module);
    settle();
    EXPECT_EQ(offered, 1);
    EXPECT_EQ(instants(), wanted ? 3 : 0);
    EXPECT_EQ(window->time()->marks().size(), wanted ? 1U : 0U);
    EXPECT_EQ(window->time()->unsaved(), wanted);
    answer = Unsaved::discard;
    EXPECT_TRUE(window->close());
    EXPECT_FALSE(QFile::exists(file)) << "a clean close leaves nothing";
    window.reset();
  }
}

}  // namespace
}  // namespace kiva::test
