// SPDX-License-Identifier: GPL-2.0-or-later
// The program itself, run as a user runs it, with other people's programs checking what it wrote.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>

#include <algorithm>
#include <filesystem>
#include <nlohmann/json.hpp>

#include "support/core_test.h"
#include "support/mp3_builder.h"
#include "support/test_folder.h"

namespace corvelin::test {
namespace {

using Json = nlohmann::json;

class Cli : public ::testing::Test {
 protected:
  struct Result {
    int status;
    std::string out;
    std::string err;
  };

  // Runs a shell line in the test's folder.
  Result shell(const std::string& line) {
    const std::string command = "cd '" + folder.path("") + "' && { " + line + "\n} >'" +
                                logs.path("out") + "' 2>'" + logs.path("err") + "'";
    const int status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : 128, read_text(logs.path("out")),
            read_text(logs.path("err"))};
  }
  Result cli(const std::string& arguments) {
    return shell(std::string(CORVELIN_CLI) + " " + arguments);
  }

  // A copy of a sample of the repository.
  void sample(const std::string& name) { sample(name, name); }
  void sample(const std::string& name, const std::string& copy) {
    std::filesystem::copy(std::string(CORVELIN_SAMPLES) + "/" + name, folder.path(copy));
  }

  TestFolder folder;
  TestFolder logs;
};

// It waits for a line that never comes.
TEST_F(Cli, ASignalEndsItAsACancel) {
  ::mkfifo(folder.path("lines").c_str(), 0666);
  for (const auto& [signal, status] : {std::pair("INT", 130), std::pair("TERM", 143)}) {
    const Result result =
        shell("exec 3<>lines; (exec " + std::string(CORVELIN_CLI) +
              " --script - <lines) & echo state >&3; while ! [ -s " + logs.path("out") +
              " ]; do sleep 0.01; done; kill -" + signal + " $!; wait $!");
    EXPECT_EQ(result.status, status);
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(Cli, SavesEverySampleWithoutLoss) {
  // As ffprobe -count_packets counts the frames.
  const std::pair<std::string, std::size_t> samples[] = {
      {"cbr128.mp3", 1232}, {"vbr.mp3", 1734},   {"mono_mpeg2.mp3", 830},
      {"crc.mp3", 522},     {"layer2.mp2", 493}, {"speech.aac", 875}};
  // Position, index, offset, length, bitrate and gain of each.
  const auto frames_of = [&](const std::string& file) {
    const std::string bytes = read_text(folder.path(file));
    std::vector<std::string> frames;
    std::istringstream lines(cli(file + " --frames").out);
    std::size_t offset = 0;
    std::size_t length = 0;
    for (std::string skipped;
         lines >> skipped >> skipped >> offset >> length >> skipped >> skipped;)
      frames.push_back(bytes.substr(offset, length));
    return frames;
  };
  for (const auto& [name, count] : samples) {
    SCOPED_TRACE(name);
    sample(name);
    const std::string saved = name + name.substr(name.find('.'));
    const Result result = cli(name + " /save");
    ASSERT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.err, "");
    // Every frame is the source's, byte for byte.
    const std::vector<std::string> source_frames = frames_of(name);
    EXPECT_EQ(source_frames.size(), count);
    EXPECT_TRUE(frames_of(saved) == source_frames);
    if (name.ends_with(".aac")) continue;
    EXPECT_EQ(shell("mpg123 -q -t " + saved).err, "");
    // Without the encoder's gap correction, which goes by the header and not by the frames.
    const std::string decode = "mpg123 -q --no-gapless -s ";
    EXPECT_EQ(shell(decode + name + " | md5sum").out, shell(decode + saved + " | md5sum").out);
    EXPECT_EQ(
        shell("mp3val " + saved + " | grep WARNING | grep -v 'No supported tags\\|Non-layer-III'")
            .out,
        "");
  }
  const Json state = Json::parse(cli("vbr.mp3 --json").out);
  EXPECT_EQ(state["stream"]["vbr"], 6);
  EXPECT_EQ(state["stream"]["toc"].size(), 100U);
  EXPECT_EQ(state["sel_beg"], nullptr);
}

TEST_F(Cli, EditLinesActInOrder) {
  folder.file("a.mp3", Mp3Builder{}.shape({.has_crc = true}).frames(100).bytes());
  folder.file(
      "lines",
      "\xEF\xBB\xBF# selects and saves\nselect 1b 3000b   # frames 1 and 8\n\nseek 5000b\nstate\n"
      "save_selection \"my part.mp3\"\nset volume 10\n");
  const Result result = cli("a.mp3 --script lines -e 'header_bits 1 0 1' -e 'save all.mp3' --json");
  ASSERT_EQ(result.status, 0) << result.err;
  const std::size_t line_end = result.out.find('\n');
  const Json first = Json::parse(result.out.substr(0, line_end));
  EXPECT_EQ(first["sel_beg"], 417);
  EXPECT_EQ(first["sel_end"], 3336);
  EXPECT_EQ(first["cursor"], 5004);
  EXPECT_EQ(read_file(folder.path("my part.mp3")),
            Mp3Builder{}.shape({.has_crc = true}).frames(7).bytes());
  const FrameShape changed = {.has_crc = true, .copyright = true, .private_bit = true};
  EXPECT_EQ(read_file(folder.path("all.mp3")), Mp3Builder{}.shape(changed).frames(100).bytes());
}

// What the program answers to its arguments: its status, and a part of what it says.
TEST_F(Cli, SaysWhatItDidNotDo) {
  folder.file("a.mp3", Mp3Builder{}.frames(50).zeros(20).frames(50).bytes());
  folder.file("b.mp3", Mp3Builder{}.shape({.sample_rate = 48000}).frames(50).bytes());
  folder.file("a.aac", Mp3Builder{}.adts(50, 200).bytes());
  folder.file("exists.mp3", "old");
  folder.file("empty.mp3", "");
  folder.file("text.mp3", std::string(5000, 'x'));
  folder.file("wave.mp3", "RIFF----WAVEfmt " + std::string(5000, '\0'));
  folder.file("adts.mp3", Mp3Builder{}.adts(50, 200).bytes());
  folder.file("gap.m3u", "a.mp3\ngone.mp3\na.mp3\n");
  folder.file("none.cvp", "[corvlproject]\r\nfile=absent.mp3\r\n");
  folder.file("long", std::string(2 << 20, 'x') + "\nstate\n");
  ::mkfifo(folder.path("pipe.mp3").c_str(), 0666);
  const auto names = folder.names();
  const struct {
    const char* arguments;
    int status;
    const char* told;
    const char* printed = "";
  } runs[] = {
      {"absent.mp3", 1, "\nNo such file or directory\ncorvelin-cli: absent.mp3 was not opened"},
      {"empty.mp3", 1, "\nThe file is empty.\n"},
      {"text.mp3", 1, "\nThere are no frames of MPEG audio"},
      {"wave.mp3", 1, "\nThis is a WAV file;"},
      {"adts.mp3", 1, "a name ending in .aac opens"},
      {"pipe.mp3", 1, "\nThis is no regular file.\n"},
      {"none.cvp", 1, "\nNo such file or directory\n"},
      {". --info", 1, "\nIs a directory\n"},
      {"noextension", 1, "Unsupported file type.\nNo such file"},
      {"x.mp4", 1, "x.mp4"},
      {"a.mp3 b.mp3 -e state", 1, "b.mp3 was not joined"},
      {"gap.m3u -o gap.mp3", 1, "gone.mp3 was not joined"},
      {"a.mp3 a.aac", 1, "MP3 / AAC"},
      // The first refusal ends the run, and no switch is run; with --keep-going only the latter.
      {"a.mp3 -e nonsense -e 'save x.mp3' /save", 1, "/save was not run"},
      {"a.mp3 -e nonsense -o x.mp3", 1, "nonsense"},
      {"a.mp3 --keep-going -e nonsense -e 'help undo' /save", 1, "/save was not run", "undo "},
      {"a.mp3 -e 'append a.mp3 b.mp3'", 1, "nothing was appended"},
      {"a.mp3 --script absent", 1, "absent: No such file or directory"},
      {"a.mp3 --script .", 1, ".: Is a directory"},
      {"a.mp3 --script long", 1, "long:1: the line is too long"},
      {"a.mp3 --keep-going --script long", 1, "long:1", "{\"stream\""},
      {"a.mp3 -e crop", 1, "No selection or selection too short."},
      {"a.mp3 -e 'select 1b 2b 3b'", 1, "select POS POS"},
      {"a.mp3 -e 'set volume 101'", 1, "101"},
      {"a.mp3 -e 'header_bits 1 2 0'", 1, "neither 0 nor 1"},
      {"a.mp3 -e 'open \"x'", 1, "a quote is left open"},
      {"a.mp3 -e batch_dialog", 1, "nobody here to fill in"},
      {"a.mp3 -e 'save_reencoded x.mp2'", 1, "no name for an MP3 file"},
      {"a.mp3 /normalize", 1, "digital silence"},
      // Nothing is written over unasked, whatever the settings say of warnings.
      {"a.mp3 -e 'save exists.mp3'", 1, "exists; it is replaced with --yes"},
      {"a.mp3 -o a.mp3 --set warn_existing=0 --set warn=0", 1, "a.mp3 exists"},
      {"a.mp3 -e 'save absent/x.mp3'", 1, "No such file or directory"},
      // A command that would ask for a file takes no name that was meant for another.
      {"a.mp3 -e 'save_selection x.mp3' -e save_complete --keep-going", 1,
       "Create audio file: There is nobody here to choose a file.\n"},
      {"a.mp3 -e 'cut 0 1b'", 0, "nothing saved the edited document"},
      {"a.mp3 -e 'cut 0 1b' -e undo", 0, ""},
      {"a.mp3 --set nothing=1", 2, "there is no setting \"nothing\""},
      {"a.mp3 --ifno", 2, "did you mean --info?"},
      {"--commands", 0, "", "cut POS POS [POS POS …]"},
      {"--keys", 0, "", "split_pattern"},
      {"--pattern", 0, "", "%N  = Track"},
      {"a.mp3 --frames > /dev/full", 1, "standard output: write error"},
      {"a.mp3 -e nonsense 2> /dev/full", 1, ""},
  };
  for (const auto& run : runs) {
    SCOPED_TRACE(run.arguments);
    const Result result = cli(run.arguments);
    EXPECT_EQ(result.status, run.status);
    EXPECT_NE(result.err.find(run.told), std::string::npos) << result.err;
    EXPECT_EQ(result.err.empty(), *run.told == '\0') << result.err;
    EXPECT_NE(result.out.find(run.printed), std::string::npos) << result.out;
    EXPECT_EQ(result.out.empty(), *run.printed == '\0') << result.out;
  }
  EXPECT_EQ(read_text(folder.path("exists.mp3")), "old");
  EXPECT_EQ(folder.names(), names);
  const Result saved = cli("a.mp3 -o exists.mp3 --yes");
  EXPECT_EQ(saved.status, 0);
  EXPECT_EQ(saved.err, "Frames: 100    Re-syncs: 1\n");  // bytes that were left out are told
  EXPECT_EQ(cli("a.mp3 -e 'save a.mp3' --yes").status, 0);
}

TEST_F(Cli, SwitchesWriteBesideTheFileAndIntoFoldersThatTheyMake) {
  folder.file("a.mp3", Mp3Builder{}.frames(20).bytes());
  folder.file("b.mp3", Mp3Builder{}.shape({.copyright = true}).frames(20).bytes());
  EXPECT_EQ(cli("a.mp3 b.mp3 -e 'cue 417b B' /save").status, 0);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")).size(), 40U * length);
  EXPECT_EQ(cli("a.mp3 -e 'cut 0 417b' --save").status, 1);  // it stands there already
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")).size(), 40U * length);
  EXPECT_EQ(cli("a.mp3 -e 'cut 0 417b' --save --yes").status, 0);
  EXPECT_EQ(read_file(folder.path("a.mp3.mp3")).size(), 19U * length);
  EXPECT_EQ(cli("a.mp3 b.mp3 --set split_pattern=%N --split made/here").status, 0);
  EXPECT_EQ(read_file(folder.path("made/here/02.mp3")), read_file(folder.path("b.mp3")));
}

TEST_F(Cli, LevelsAreSetByLines) {
  folder.file("a.mp3", Mp3Builder{}.frames(20).bytes());
  const Result result =
      cli("a.mp3 -e 'select 2085b 6255b' -e 'level -4 +8' -e 'normalize 2' --json");
  ASSERT_EQ(result.status, 0) << result.err;
  std::string gains;
  const Json state = Json::parse(result.out);
  for (const Json& part : state["parts"]) gains += part["part_gainbeg"].dump() + ' ';
  EXPECT_EQ(gains + state["end_gain"].dump(), "2 2 -2 10 2 2");
}

// What the program measures, told by another decoder.
TEST_F(Cli, SwitchesMeasureAndSave) {
  sample("crc.mp3");
  sample("vbr.mp3");
  ASSERT_EQ(cli("crc.mp3 --normalize").status, 0);
  const std::string decode = "mpg123 -q --no-gapless -s crc.mp3.mp3";
  const std::string samples = shell(decode).out;
  int peak = 0;
  for (std::size_t i = 0; i + 1 < samples.size(); i += 2) {
    const int low = static_cast<unsigned char>(samples[i]);
    peak = std::max(peak, std::abs(static_cast<signed char>(samples[i + 1]) * 256 + low));
  }
  EXPECT_NEAR(peak, 17804 * 1.6818, 3);  // by three steps of 1.50515 dB
  EXPECT_EQ(shell("mp3val crc.mp3.mp3 | grep 'CRC error'").out, "");

  const Result again = cli("crc.mp3.mp3 --normalize");
  EXPECT_EQ(again.status, 1);
  EXPECT_EQ(again.err, "The peak fills the range already.\n");
  EXPECT_EQ(cli("vbr.mp3 --set silence_skip=0 --set split_pattern=%N --pausesplit parts").status,
            0);
  EXPECT_EQ(shell("ls parts").out, "01.mp3\n02.mp3\n03.mp3\n04.mp3\n05.mp3\n");
  EXPECT_EQ(
      cli("crc.mp3 --set autocue=5 --set autocue_last=0 --set split_pattern=%N --autocue cues")
          .status,
      0);
  EXPECT_EQ(shell("ls cues").out, "01.mp3\n02.mp3\n03.mp3\n");
}

TEST_F(Cli, FullDiskIsToldAndTheSourceStands) {
  const Bytes bytes = Mp3Builder{}.frames(1000).bytes();
  folder.file("a.mp3", bytes);
  const Result result =
      shell("ulimit -f 200; " + std::string(CORVELIN_CLI) + " a.mp3 /save /overwrite");
  EXPECT_EQ(result.status, 1);
  EXPECT_NE(result.err.find("Error: File too large"), std::string::npos) << result.err;
  EXPECT_EQ(read_file(folder.path("a.mp3")), bytes);
}

// From a file in the place of a device: as fast as it goes until the limit, or until a signal, with
// what was asked by signals on the way.
TEST_F(Cli, RecordsUntilTheLimitOrASignal) {
  const std::string rec = "SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILEIN=sound SDL_DISKAUDIODELAY=";
  folder.file("sound", std::string(10'000'000, '\0'));
  const Result limit = shell(rec + "0 " + CORVELIN_CLI +
                             " /rec take --set rec_time=1 --json -e 'cut 0 20s' -o cut.mp3");
  ASSERT_EQ(limit.status, 0) << limit.err;
  EXPECT_NEAR(Json::parse(limit.out)["total_s"].get<double>(), 40, 0.2);
  ASSERT_EQ(cli("take.mp3 --info").status, 0);

  const Result ended =
      shell(rec + "20 " + CORVELIN_CLI +
            " --rec take.mp3 --json --set enc_lam_vbr_method=-1 --set enc_lam_bitrate=320 & " +
            "while ! [ -s 'take (2).mp3' ]; do sleep 0.05; done; kill -USR1 $!; "
            "kill -USR2 $!; sleep 1; kill -TERM $!; wait $!");
  ASSERT_EQ(ended.status, 0) << ended.err;
  EXPECT_NE(ended.err.find("take (2).mp3: 0'"), std::string::npos) << ended.err;
  EXPECT_EQ(Json::parse(ended.out)["parts"].size(), 2u);
  EXPECT_EQ(Json::parse(cli("'take (2).cvp' --json").out)["parts"][1]["part_iscue"], 1);

  const Result none = shell("SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILEIN=none " +
                            std::string(CORVELIN_CLI) + " /rec x");
  EXPECT_EQ(none.status, 1);
  EXPECT_NE(none.err.find("Could not open wave/audio device"), std::string::npos);
}

// Each recipe of the README as it stands there, one after the other in one folder.
TEST_F(Cli, TheRecipesOfTheReadmeWork) {
  const FrameShape low = {.version = 25, .bitrate = 8, .sample_rate = 8000};  // 72 ms a frame
  folder.file("talk.mp3", Mp3Builder{}.shape(low).frames(45 * 60 * 14).bytes());
  for (const char* const name : {"one.mp3", "two.mp3", "three.mp3", "episodes/a b.mp3"}) {
    std::filesystem::create_directory(folder.path("episodes"));
    folder.file(name, Mp3Builder{}.shape(low).frames(1000).bytes());
  }
  for (const char* const name : {"cbr128.mp3", "song.mp3", "record-side.mp3"})
    sample("cbr128.mp3", name);
  sample("cbr128.cue", "album.cue");
  const std::string path =
      "PATH=" + std::filesystem::path(CORVELIN_CLI).parent_path().string() + ":$PATH";

  std::istringstream readme(read_text(CORVELIN_README));
  std::string recipe;
  int count = 0;
  bool is_inside = false;
  for (std::string line; std::getline(readme, line);) {
    if (line.starts_with('#')) is_inside = line == "### Recipes";
    if (is_inside && line.starts_with("    ")) {
      recipe += line.substr(4) + "\n";
    } else if (!recipe.empty()) {
      SCOPED_TRACE(recipe);
      folder.file("recipe", "set -e\n" + recipe);
      const Result result = shell(path + " bash recipe");
      EXPECT_EQ(result.status, 0);
      EXPECT_EQ(result.err, "");
      recipe.clear();
      ++count;
    }
  }
  EXPECT_GE(count, 12);
  EXPECT_TRUE(std::filesystem::exists(folder.path("done/a b.mp3")));
  EXPECT_TRUE(std::filesystem::exists(folder.path("louder/a b.mp3")));
  EXPECT_TRUE(std::filesystem::exists(folder.path("tracks/06 Das Ende.mp3")));
  EXPECT_NE(read_text(folder.path("talk.cue")).find("INDEX 01 22:05:"), std::string::npos);
  EXPECT_NE(read_text(folder.path("shorter.cue")).find("\"shorter.mp3\""), std::string::npos);
}

// What several processes do, each with its file, is what one does with one file after the other.
TEST_F(Cli, ABatchTellsWhatBecameOfEachFile) {
  std::filesystem::create_directory(folder.path("in"));
  sample("cbr128.mp3", "in/1.mp3");
  sample("vbr.mp3", "in/-2.mp3");
  sample("mono_mpeg2.mp3", "in/b\xFF c.mp3");
  folder.file("in/bad.mp3", "no audio");
  const Result one = cli("--batch in --do normalize=-1,limit=3 --to one -j 1 --json");
  EXPECT_EQ(one.status, 1);
  EXPECT_EQ(one.err, "corvelin-cli: bad.mp3: There are no frames of MPEG audio or ADTS in it.\n");
  const auto report = nlohmann::json::parse(one.out);
  EXPECT_EQ(report["written"], 3);
  EXPECT_EQ(report["results"][2]["outcome"], "failed");
  const Result three = cli("--batch in --do normalize=-1,limit=3 --to three -j 4");
  EXPECT_NE(three.out.find("1 / 4  written    -2.mp3 -> "), std::string::npos);
  EXPECT_NE(three.out.find("\nwritten        3\nfailed         1\n  bad.mp3: "), std::string::npos);
  EXPECT_EQ(shell("diff -r one three").out, "");
  cli("--batch in --do normalize=-1,limit=3 --to unread -j 1 | true");
  EXPECT_EQ(shell("diff -r one unread").out, "");
  const Result again = cli("--batch in --do save --to one --mask 1.mp3");
  EXPECT_EQ(again.status, 1);
  EXPECT_NE(again.err.find("exists already"), std::string::npos);
  EXPECT_EQ(shell("diff -r one three").out, "");
}

// The record tells of a replacement before it is made, and a new run takes it from there: what was
// replaced without a result isn't replaced again, what failed is, and half a line is nothing.
TEST_F(Cli, ABatchGoesOnFromItsRecord) {
  for (const char* const name : {"1.mp3", "2.mp3", "b\xFF.mp3"}) sample("cbr128.mp3", name);
  const std::string batch = "printf '%s\\0' 1.mp3 2.mp3 b\xFF.mp3 bad.mp3 | " CORVELIN_CLI
                            " --batch --files - -0 --do level=-1 --overwrite -j 2 --json-lines ";
  EXPECT_EQ(shell(batch + ">first").status, 1);
  EXPECT_EQ(shell("grep -c '\"begun\".*\"size\":[0-9]' first").out, "3\n");
  EXPECT_EQ(shell("grep -c '\"written\"' first").out, "3\n");
  shell(
      "cp 2.mp3 done; { grep 1.mp3 first; grep begun first; sed 's/written/failed/' first |"
      " grep 2.mp3; grep bad first; grep written first | grep _bytes | cut -c-40 | tr -d '\\n';"
      "} >record");
  sample("cbr128.mp3", "bad.mp3");
  EXPECT_EQ(shell(batch + "--skip-done record >>record").status, 0);
  EXPECT_EQ(shell("cmp 1.mp3 done; cmp 2.mp3 done; cmp b*.mp3 done; cmp bad.mp3 done").out, "");
  EXPECT_EQ(shell("grep -c 'counts as done' record").out, "2\n");
  EXPECT_EQ(shell(batch + "--skip-done record").out, "");
}

// A project, its audio and a cue sheet, by way of the program and read by another.
TEST_F(Cli, ProjectsAndCueSheetsGoAround) {
  sample("cbr128.mp3");
  const std::string quiet = " --set msg_hide=255 --yes";
  const Result made =
      cli("cbr128.mp3 -e 'names part_title=\"One ü\" sheet_artist=Me' -e 'select 5s 10s' "
          "-e 'save_project p.cvp' -e 'save_project p.cue'" +
          quiet);
  ASSERT_EQ(made.status, 0) << made.err;
  const Json state = Json::parse(cli("p.cvp --json").out);
  EXPECT_EQ(state["parts"][0]["part_title"], "One ü");
  EXPECT_EQ(state["sheet_artist"], "Me");
  // 5 s are 80031 bytes at the average rate; the frame at or behind them is the 192nd.
  EXPECT_NEAR(state["sel_beg"].get<double>(), 80100, 418);
  const Result undone = cli("p.cvp -e 'names part_title=Two' -e undo -e state -e undo");
  EXPECT_EQ(undone.status, 1);  // there was but one step
  EXPECT_EQ(Json::parse(undone.out)["parts"][0]["part_title"], "One ü");
  EXPECT_EQ(Json::parse(cli("p.cue --json").out)["parts"][0]["part_title"], "One ü");
  EXPECT_EQ(cli("cbr128.mp3 -e 'load_cue p.cue' -e 'names part_title=X y=Z'" + quiet).status, 1);
}

TEST_F(Cli, CommandsByNumberAndNameAndAClipboardBetweenProcesses) {
  folder.file("a.mp3", Mp3Builder{}.frames(100).bytes());
  folder.file("b.mp3", Mp3Builder{}.shape({.copyright = true}).frames(50).bytes());
  const Result cut =
      cli("a.mp3 -e 'select 4170b 8340b' -e 152 -e 'seek 4170b' -e edit_restore -e crop -e 'save "
          "cut.mp3' --json");
  ASSERT_EQ(cut.status, 0) << cut.err;
  EXPECT_EQ(read_file(folder.path("cut.mp3")), Mp3Builder{}.frames(10).bytes());
  EXPECT_EQ(Json::parse(cut.out)["undo"], Json({"Crop", "Edit", "Cut/Cue", "Selection"}));

  const std::string clipboard = " --clipboard " + folder.path("clip");
  ASSERT_EQ(cli("b.mp3 -e 'select 0 834b' -e copy" + clipboard).status, 0);
  const Result pasted =
      cli("a.mp3 -e 'seek 417b' -e paste -e 'append b.mp3' -e 'save joined.mp3'" + clipboard);
  ASSERT_EQ(pasted.status, 0) << pasted.err;
  const FrameShape other = {.copyright = true};
  EXPECT_EQ(read_file(folder.path("joined.mp3")), Mp3Builder{}
                                                      .frames(1)
                                                      .shape(other)
                                                      .frames(2)
                                                      .shape({})
                                                      .frames(99)
                                                      .shape(other)
                                                      .frames(50)
                                                      .bytes());
}

// A translation beside the program. A row whose specifiers don't fit is printed as it stands.
TEST_F(Cli, SpeaksTheLanguageOfItsSettings) {
  std::filesystem::copy(CORVELIN_CLI, folder.path("program"));
  std::filesystem::create_directory(folder.path("Languages"));
  folder.file(
      "Languages/lanTest.ini",
      "x\r\nUTF-8=1\r\nmsg010=\u00D6ffnen schlug fehl\r\ndlg030=%s %n\r\nmsg015=%s%s%n\r\nx");
  folder.file("a.mp3", Mp3Builder{}.frames(20).zeros(20).frames(50).bytes());
  const std::string program = "./program --set language=Test ";
  EXPECT_TRUE(shell(program + "absent.mp3").err.starts_with("\u00D6ffnen schlug fehl: Audio file"));
  EXPECT_NE(shell(program + "a.mp3 --info").out.find("\n%s %n "), std::string::npos);
  EXPECT_EQ(shell(program + "a.mp3 -e 'split .'").err, "Warning: %s%s%n\n");
  EXPECT_TRUE(shell("./program absent.mp3").err.starts_with("File open failed: "));
  folder.file("c.ini", "[Corvelin]\r\nlanguage=Absent\r\n");
  shell("./program a.mp3 --settings c.ini");
  EXPECT_NE(read_text(folder.path("c.ini")).find("\r\nlanguage=\r\n"), std::string::npos);
}

TEST_F(Cli, SettingsAreReadAndKeptWithoutThoseOfTheRun) {
  folder.file("a.mp3", Mp3Builder{}.frames(100).bytes());
  folder.file("c.ini", "[Corvelin]\r\nutf8=1\r\nvolume=33\r\nwarn=1\r\n");
  const Result result =
      cli("a.mp3 --settings c.ini --set volume=44 --set zoom=4 -e 'set zoom 2' -e 'set margin 0'");
  ASSERT_EQ(result.status, 0) << result.err;
  const std::string kept = read_text(folder.path("c.ini"));
  EXPECT_NE(kept.find("\r\nvolume=33\r\n"), std::string::npos);
  EXPECT_NE(kept.find("\r\nzoom=2\r\n"), std::string::npos);
  EXPECT_NE(kept.find("\r\nmargin=0\r\n"), std::string::npos);
  EXPECT_NE(kept.find("\r\nwarn=1\r\n"), std::string::npos);
  EXPECT_NE(kept.find("/a.mp3\r\n"), std::string::npos);
  EXPECT_EQ(cli("a.mp3 --settings absent/c.ini").status, 1);  // they can't be kept there
  const Bytes audio = read_file(folder.path("a.mp3"));
  EXPECT_EQ(cli("a.mp3 --settings a.mp3").status, 1);
  EXPECT_EQ(read_file(folder.path("a.mp3")), audio);

  std::filesystem::copy(CORVELIN_CLI, folder.path("program"));
  ASSERT_EQ(shell("./program a.mp3 /localini").status, 0);
  EXPECT_NE(read_text(folder.path("program.ini")).find("volume=75\r\n"), std::string::npos);
  EXPECT_EQ(shell("./program a.mp3 /localini --set volume=5").status, 0);
  EXPECT_NE(read_text(folder.path("program.ini")).find("volume=75\r\n"), std::string::npos);
}

TEST_F(Cli, PlaysWhatASaveWrites) {
  sample("cbr128.mp3");
  std::filesystem::copy(folder.path("cbr128.mp3"), folder.path("b.mp3"));
  const std::string disk = "SDL_AUDIODRIVER=disk SDL_DISKAUDIOFILE=played ";
  const Result result = shell(
      disk + "SDL_DISKAUDIODELAY=0 " + CORVELIN_CLI +
      " cbr128.mp3 -e 'append b.mp3' -e 'cut 2s 4s 20s 40s' -e 'select 6s 9s' -e 'level -10 3'"
      " -e 'seek 0s' -e 'save out.mp3' -e play -e state");
  EXPECT_EQ(result.status, 0) << result.err;
  EXPECT_EQ(result.err, "");
  const Json state = Json::parse(result.out);
  EXPECT_EQ(state["cursor"], state["total_size"]);
  const std::string decoded = shell("mpg123 -q --no-gapless -s out.mp3").out;
  const std::string played = read_text(folder.path("played"));
  // The driver writes silence before it is told to begin, and fills up its last period.
  const auto sound_of = [](std::string_view samples) {
    const std::size_t begin = samples.find_first_not_of('\0');
    const std::size_t end = samples.find_last_not_of('\0');
    return begin == std::string_view::npos ? samples : samples.substr(begin, end + 1 - begin);
  };
  EXPECT_GT(sound_of(decoded).size(), 40U << 10U);
  EXPECT_TRUE(sound_of(played) == sound_of(decoded));

  // In the time that it takes, until Ctrl+C, which ends the play alone.
  const Result stopped = shell(
      "rm played; export " + disk + "\n(exec " + CORVELIN_CLI +
      " cbr128.mp3 -e play -e state) & while [ \"$(stat -c %s played || echo 0)\" -lt 100000 ]; "
      "do sleep 0.01; done 2>/dev/null; kill -INT $!; wait $!");
  EXPECT_EQ(stopped.status, 0) << stopped.err;
  EXPECT_EQ(stopped.err, "");
  const Json where = Json::parse(stopped.out);
  EXPECT_GT(where["cursor"], 0);
  EXPECT_LT(where["cursor"], where["total_size"]);

  const Result failed = shell("SDL_AUDIODRIVER=none " + std::string(CORVELIN_CLI) +
                              " cbr128.mp3 -e play -e 'save never.mp3'");
  EXPECT_EQ(failed.status, 1);
  EXPECT_TRUE(failed.err.starts_with("Error: Could not open wave/audio device\n")) << failed.err;
  const Result wrong = cli("cbr128.mp3 -e 'play 7' --keep-going -e 'play 0 5' -e 'play 2' -e 126");
  EXPECT_EQ(wrong.status, 1);
  EXPECT_EQ(std::ranges::count(wrong.err, '\n'), 4);
}

}  // namespace
}  // namespace corvelin::test
