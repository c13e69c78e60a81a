// SPDX-License-Identifier: GPL-2.0-or-later
// MP4 files through the outside program, for which a small script stands here.
#include "exchange/extract_aac.h"

#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>

#include "edit/document_commands.h"
#include "edit/editor.h"
#include "exchange/open_document.h"
#include "platform/text/path.h"
#include "settings/settings.h"
#include "support/core_test.h"

namespace corvelin::test {
namespace {

class ExtractAac : public CoreTest {
 protected:
  // The program, which prints the track.
  void program_does(std::string_view work) {
    settings.ffmpeg = folder.file("my program", "#!/bin/sh\n" + std::string(work) + "\n");
    std::filesystem::permissions(settings.ffmpeg, std::filesystem::perms::owner_all);
  }

  std::string source = folder.file("-a \"b' $c.M4A", "container");
  std::string target = folder.path("-a \"b' $c.aac");
  std::string track = folder.file("track", Mp3Builder{}.adts(20, 372).bytes());
};

TEST_F(ExtractAac, OpensTheTrackThatTheProgramMade) {
  program_does("cat > \"" + folder.path("stdin") + "\"; printf '%s\\n' \"$@\" > \"" +
               folder.path("words") + "\"; cat \"" + track + "\"");
  ASSERT_TRUE(open(source));
  EXPECT_EQ(open_state.audio_name, target);
  EXPECT_EQ(document.total_size, 20U * 372);
  EXPECT_NE(read_text(folder.path("words"))
                .find("\n-f\nmov\n-i\nfile:" + source + "\n-vn\n-acodec\ncopy\n"),
            std::string::npos);
  EXPECT_EQ(read_text(folder.path("stdin")), "");

  folder.file(name_of(target), "mine");
  EXPECT_FALSE(open(source));  // the question takes its default
  EXPECT_EQ(take_box(), "Warning: File exists:\n\n" + target);
  EXPECT_EQ(read_text(target), "mine");
  host.answers = {BoxAnswer::ok};
  EXPECT_TRUE(open(source));
}

TEST_F(ExtractAac, LeavesAnEarlierTrackWhereNotAllOfItCame) {
  const std::string all = "cat \"" + track + "\"";
  const std::string piece = "head -c 999 \"" + track + "\"";
  const std::string ended = std::string(
      "\0\0\0\x08"
      "ftyp\0\0\0\x09"
      "mdat.",
      17);
  const std::string broken = std::string(
      "\0\0\0\x08"
      "ftyp\0\0\0\x10"
      "mdat...",
      19);
  const std::string wide = std::string(
      "\0\0\0\x01"
      "mdat\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF....",
      20);
  struct {
    std::string container;
    std::string work;
    std::string told;  // nothing: all is well
    bool leaves_piece;
  } const cases[] = {{ended, all, "", false},
                     {ended + "TAG of an older kind", all + "; echo no chapters >&2", "", false},
                     {broken, all, "breaks off in the middle", true},
                     {wide, all, "breaks off in the middle", true},
                     {ended, piece + "; echo no space >&2; exit 1", "no space", true},
                     {ended, piece + "; kill -9 $$", "ended before its time", true},
                     {ended, "echo no such codec >&2", "no such codec", false},
                     {ended, "", "No audio track", false},
                     {"", "", "No such file", false}};
  for (const auto& c : cases) {
    folder.file(name_of(source), c.container);
    folder.file(name_of(target), "mine");
    program_does(c.work);
    if (c.container.empty()) settings.ffmpeg = folder.path("none");
    host.answers = {BoxAnswer::ok};
    EXPECT_EQ(open(source), c.told.empty()) << c.work;
    const std::string left = target + ".~~~.aac";
    if (!c.told.empty()) {
      const std::string box = take_box();
      EXPECT_NE(box.find(c.told), std::string::npos) << box;
      EXPECT_EQ(box.find(left + " is not whole.") != std::string::npos, c.leaves_piece) << box;
      EXPECT_EQ(read_text(target), "mine");
    }
    EXPECT_EQ(std::filesystem::remove(left), c.leaves_piece) << c.work;
  }
}

TEST_F(ExtractAac, JoinsTracksAndReplacesNoneThatIsOpen) {
  program_does("cat \"" + track + "\"");
  const std::string a = folder.file("a.m4a", "container");
  const std::string b = folder.file("b.mp4", "container");
  const std::string a_too = folder.file("a.mp4", "container");
  EXPECT_EQ(open_files(editor, std::vector{a, b, a}).count, 3U);
  EXPECT_EQ(document.total_size, 60U * 372);
  EXPECT_EQ(document.files.size(), 2U);

  // As another container of that name would have it.
  program_does("cat \"" + track + "\" \"" + track + "\"");
  EXPECT_EQ(append_in_one_step(editor, std::vector{a_too}).failed, a_too);
  EXPECT_NE(take_box().find("a.aac is open and holds another track."), std::string::npos);
  const std::string c = folder.file("c.m4a", "container");
  EXPECT_EQ(append_in_one_step(editor, std::vector{c, b}).count, 1U);
  EXPECT_EQ(std::filesystem::file_size(folder.path("b.aac")), 20U * 372);
  EXPECT_EQ(document.total_size, 100U * 372);

  ASSERT_TRUE(open(folder.file("a.mp3", Mp3Builder{}.frames(30).bytes())));
  EXPECT_EQ(append_in_one_step(editor, std::vector{folder.file("d.m4a", "container")}).count, 0U);
  EXPECT_FALSE(std::filesystem::exists(folder.path("d.aac")));
}

TEST_F(ExtractAac, AsksForThoseOfAPlaylistAndKeepsToItsFolder) {
  program_does("cat \"" + track + "\"");
  folder.file("a.m4a", "container");
  const std::string list = folder.file("l.m3u8", "a.m4a\n./a.m4a\n");
  EXPECT_FALSE(open(list));  // the question takes its default
  EXPECT_NE(take_box().find("This playlist names MP4 files."), std::string::npos);
  host.answers = {BoxAnswer::yes};
  EXPECT_TRUE(open(list));
  EXPECT_EQ(document.total_size, 40U * 372);

  std::filesystem::remove(folder.path("a.aac"));
  std::filesystem::create_directory(folder.path("sub"));
  host.answers = {BoxAnswer::yes};
  EXPECT_FALSE(open(folder.file("sub/l.m3u8", "../a.m4a\n")));
  EXPECT_FALSE(std::filesystem::exists(folder.path("a.aac")));
}

TEST_F(ExtractAac, RefusesWhatIsNoFile) {
  program_does("cat \"" + track + "\"");
  ASSERT_EQ(::mkfifo(target.c_str(), 0600), 0);
  host.answers = {BoxAnswer::ok};
  EXPECT_FALSE(open(source));
  const std::string pipe = folder.path("pipe.m4a");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_FALSE(open(pipe));
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
  program_does("printf x; sleep 60 & echo $! > \"" + folder.path("id") + "\"; wait");
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
