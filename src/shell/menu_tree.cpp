// The tree.
#include "shell/menu_tree.h"

#include "shell/window_layout.h"

namespace corvelin {

namespace {

constexpr MenuRow line = {};

constexpr MenuRow encoding_rows[] = {{1075}, {1076}};
constexpr Menu encoding_menu = {74, encoding_rows};

constexpr MenuRow graph_level_rows[] = {{1061}, {1062}, {1063}};
constexpr Menu graph_level_menu = {70, graph_level_rows};

constexpr MenuRow file_rows[] = {{1010},
                                 {1011},
                                 line,
                                 {1012},
                                 {1013},
                                 {1073},
                                 {1014},
                                 line,
                                 {1016},
                                 {1017},
                                 {.menu = &encoding_menu},
                                 line,
                                 {1071},
                                 {1070},
                                 {1018}};
constexpr MenuRow edit_rows[] = {{1027}, line,   {1022}, line,   {1031}, {1032}, {1033},
                                 line,   {1024}, {1034}, {1023}, line,   {1019}, {1047},
                                 {1025}, {1021}, line,   {1029}, {1028}};
constexpr MenuRow special_rows[] = {{1042}, {1026}, {1046}, line,   {1074}, {1072}, line,
                                    {1066}, {1020}, {1048}, {1049}, {1035}, line,   {1044},
                                    {1030}, line,   {1077}, {1043}, {1045}};
constexpr MenuRow settings_rows[] = {
    {1050}, line,   {1051}, {1057}, {1065}, {1052}, {1059}, line,   {1060},
    {1053}, {1056}, {1058}, line,   {1054}, {1064}, line,   {1055}, {.menu = &graph_level_menu}};
constexpr MenuRow help_rows[] = {{1080}, {1081}, line, {1082}};

constexpr Menu edit_menu = {1, edit_rows};
constexpr Menu special_menu = {2, special_rows};
constexpr Menu settings_menu = {4, settings_rows};
constexpr Menu help_menu = {5, help_rows};

}  // namespace

constexpr Menu file_menu = {0, file_rows};
constexpr Menu list_menu = {3, {}};

std::span<const Menu* const> menu_bar() {
  static constexpr const Menu* menus[] = {&file_menu, &edit_menu,     &special_menu,
                                          &list_menu, &settings_menu, &help_menu};
  return menus;
}

// Looped play has a button of its own where buttons have symbols.
bool has_entry(const MenuRow& row) { return row.command != 1045 || has_text_buttons(panel_form()); }

}  // namespace corvelin
