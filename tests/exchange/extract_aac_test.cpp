// MP4 files through the outside program, for which a small script stands here.
#include "exchange/extract_aac.h"

#include <unistd.h>

#include <filesystem>

#include "platform/path.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class ExtractAac : public CoreTest {
 protected:
  // The program: it finds its sources and targets as ffmpeg does, the target being the last word.
  void program_does(std::string_view work) {
    settings.ffmpeg =
        folder.file("my program", "#!/bin/sh\nfor t; do :; done\n" + std::string(work) + "\n");
    std::filesystem::permissions(settings.ffmpeg, std::filesystem::perms::owner_all);
  }

  std::string source = folder.file("-a \"b' $c.M4A", "container");
  std::string target = folder.path("-a \"b' $c.aac");
  std::string track = folder.file("track", Mp3Builder{}.adts(20, 372).bytes());
};

TEST_F(ExtractAac, OpensTheTrackThatTheProgramMade) {
  program_does("cat > \"" + folder.path("stdin") + "\"; printf '%s\\n' \"$@\" > \"" +
               folder.path("words") + "\"; cp \"" + track + "\" \"${t#file:}\"");
  ASSERT_TRUE(open(source));
  EXPECT_EQ(open_state.audio_name, target);
  EXPECT_EQ(document.total_size, 20U * 372);
  EXPECT_NE(read_text(folder.path("words")).find("-i\nfile:" + source + "\n-vn\n-acodec\ncopy\n"),
            std::string::npos);
  EXPECT_EQ(read_text(folder.path("stdin")), "");

  folder.file(name_of(target), "mine");
  EXPECT_FALSE(open(source));  // the question takes its default
  EXPECT_EQ(take_box(), "Warning: File exists:\n\n" + target);
  EXPECT_EQ(read_text(target), "mine");
  host.answers = {BoxAnswer::ok};
  EXPECT_TRUE(open(source));
}

TEST_F(ExtractAac, TellsWhatTheProgramSaidWhenNothingCameOfIt) {
  folder.file(name_of(target), "mine");
  host.answers = {BoxAnswer::ok};
  program_does("echo no such codec >&2");
  EXPECT_FALSE(open(source));
  EXPECT_NE(take_box().find("no such codec"), std::string::npos);
  EXPECT_EQ(read_text(target), "mine");

  program_does("cp \"" + track + "\" \"${t#file:}\"; echo no space >&2; exit 1");
  host.answers = {BoxAnswer::ok};
  EXPECT_TRUE(open(source));
  EXPECT_NE(take_box().find(target + " is not whole: no space"), std::string::npos);

  program_does("cp \"" + track + "\" \"${t#file:}\"; echo disk full >&2");
  host.answers = {BoxAnswer::ok};
  EXPECT_TRUE(open(source));
  EXPECT_NE(take_box().find(target + " may not be whole: disk full"), std::string::npos);

  settings.ffmpeg = folder.path("none");
  host.answers = {BoxAnswer::ok};
  EXPECT_FALSE(open(source));
  EXPECT_NE(take_box().find("No such file"), std::string::npos);
}

TEST_F(ExtractAac, EndsTheProgramWhenItIsCancelled) {
  struct ImpatientHost : ScriptedHost {
    std::string id_file;
    void drive(LongRun& run) override {
      while (read_text(id_file).empty() && run.step()) {
      }
      run.cancel();
    }
  } impatient;
  impatient.id_file = folder.file("id", "");
  program_does("printf x > \"${t#file:}\"; sleep 60 & echo $! > \"" + folder.path("id") +
               "\"; wait");
  EXPECT_FALSE(open(source));
  EXPECT_TRUE(impatient.boxes.empty());
  EXPECT_EQ(folder.names().size(), 4U);  // the source, the track, the program and its id
  const std::string id = read_text(folder.path("id"));
  ASSERT_FALSE(id.empty());
  // What the program started is gone with it, or about to be.
  const std::string words = "/proc/" + id.substr(0, id.find('\n')) + "/cmdline";
  for (int turns = 100; turns > 0 && !read_text(words).empty(); --turns) ::usleep(10'000);
  EXPECT_EQ(read_text(words), "");
}

}  // namespace
}  // namespace corvelin::test
