# SPDX-License-Identifier: GPL-2.0-or-later
# The pages for `man`. Each program prints its own (--man), made from the tables by which it works.
find_program(GZIP gzip REQUIRED)

set(pages)
foreach(program corvelin-cli corvelin)
  if(TARGET ${program})
    set(page ${PROJECT_BINARY_DIR}/${program}.1)
    add_custom_command(
      OUTPUT ${page}.gz
      COMMAND ${program} --man > ${page}
      COMMAND ${GZIP} -9nf ${page}
      DEPENDS ${program}
      COMMENT "Printing the manual page of ${program}")
    list(APPEND pages ${page}.gz)
  endif()
endforeach()
add_custom_target(manual_pages ALL DEPENDS ${pages})
install(FILES ${pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
