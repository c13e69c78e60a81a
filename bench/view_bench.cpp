// SPDX-License-Identifier: GPL-2.0-or-later
// Measures drawings of the editor view of 1600 x 500 pixels into memory, all but the text, of a
// document of 100 parts over a file of 400 MB in a warm cache: again at the same place, moving on
// by two frames as while it plays, and at a place that was not seen before.
#include <fmt/format.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include "audio/playback.h"
#include "edit/editor.h"
#include "edit/open_files.h"
#include "model/cuts.h"
#include "model/document.h"
#include "model/frame_locator.h"
#include "model/selection.h"
#include "settings/settings.h"
#include "shell/editor_view.h"
#include "shell/start_up.h"
#include "support/mp3_builder.h"
#include "support/plain_picture.h"

namespace {

using namespace corvelin;

constexpr int width = 1600;
constexpr int height = 500;
constexpr std::size_t file_size = 400'000'000;
constexpr int rounds = 50;

void write_audio(const std::string& path) {
  test::Mp3Builder builder;
  for (int i = 0; i < 500; ++i) builder.frame({.global_gain = 140 + i % 50, .noisy = true});
  std::ofstream out(path, std::ios::binary);
  for (std::size_t written = 0; written < file_size; written += builder.size())
    out.write(reinterpret_cast<const char*>(builder.bytes().data()),
              static_cast<std::streamsize>(builder.size()));
}

void make_parts(Editor& editor) {
  for (std::uint32_t i = 1; i < 100; ++i) {
    const PartIndex part =
        split_at(editor.document, frame_at(editor.document, editor.document.total_size / 100 * i,
                                           editor.selection.current_frame));
    editor.document.parts[part].part_gainbeg = i % 2 == 0 ? -4 : 0;
  }
}

void time_drawing(Editor& editor, const char* name, double limit, EditorView& view, Canvas& picture,
                  const std::function<void(int)>& move) {
  double best = 1e9;
  double sum = 0;
  for (int round = 0; round < rounds; ++round) {
    move(round);
    const auto start = std::chrono::steady_clock::now();
    view_redraw(editor, view, picture);
    const std::chrono::duration<double, std::milli> taken =
        std::chrono::steady_clock::now() - start;
    best = std::min(best, taken.count());
    sum += taken.count();
  }
  fmt::print("  {:20} {:5.2f} ms at best, {:5.2f} ms on average (limit {})\n", name, best,
             sum / rounds, limit);
}

void draw_at_zoom(Editor& editor, std::uint16_t zoom, double limit) {
  fmt::print("The view at zoom {}:\n", zoom);
  settings.zoom = zoom;
  EditorView view;
  test::PlainPicture picture(width, height);
  lay_out_view(view, width, height, 1);
  const EditPosition middle =
      frame_at(editor.document, editor.document.total_size / 2, editor.selection.current_frame);
  time_drawing(editor, "at the same place", limit, view, picture,
               [&](int) { editor.selection.cursor = middle; });
  time_drawing(editor, "moving", limit, view, picture, [&](int round) {
    editor.selection.cursor = middle + static_cast<std::uint32_t>(round) * 2 * 417;
  });
  time_drawing(editor, "at a new place", limit, view, picture, [&](int round) {
    seek_to(editor.playback,
            editor.document.total_size / rounds * static_cast<std::uint32_t>(round));
  });
}

}  // namespace

int main() {
  Editor editor;
  const std::string path =
      (std::filesystem::temp_directory_path() / "corvelin-view-bench.mp3").string();
  write_audio(path);
  start_up(editor, std::nullopt);
  const bool is_open = open_file(editor, path);
  if (is_open) {
    make_parts(editor);
    draw_at_zoom(editor, 32, 2);
    draw_at_zoom(editor, 8, 2);
    draw_at_zoom(editor, 1, 4);
  }
  shut_down(editor);
  std::filesystem::remove(path);
  return is_open ? EXIT_SUCCESS : EXIT_FAILURE;
}
