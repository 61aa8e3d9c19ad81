# The manual from docs/manual with its pictures, and what is made from the programs' own --help: man pages and completions.
find_program(ASCIIDOCTOR asciidoctor REQUIRED)

set(made ${CMAKE_CURRENT_BINARY_DIR})
set(manual ${PROJECT_SOURCE_DIR}/docs/manual)
set(packaging ${CMAKE_CURRENT_SOURCE_DIR})

file(GLOB pages CONFIGURE_DEPENDS ${manual}/*.adoc)
file(GLOB scripts CONFIGURE_DEPENDS ${manual}/pictures/*.vks)
# Drawn by the program as it is now.
add_custom_command(OUTPUT ${made}/pictures.stamp
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${made}/manual/pictures
  COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/manual/pictures
  COMMAND vk32-manual-pictures ${made}/manual/pictures ${scripts}
  COMMAND ${CMAKE_COMMAND} -E touch ${made}/pictures.stamp
  DEPENDS ${scripts} vk32-manual-pictures VERBATIM)
add_custom_command(OUTPUT ${made}/manual/index.html
  COMMAND ${ASCIIDOCTOR} -a nofooter -a webfonts! -a reproducible -a imagesdir=pictures -D ${made}/manual ${pages}
  DEPENDS ${pages} VERBATIM)
set(outputs ${made}/pictures.stamp ${made}/manual/index.html)

foreach(program vk32 vk32-cli vk32-script vk32-sim)
  set(options ${made}/options/${program}.txt)
  set(man ${made}/man/${program}.1)
  add_custom_command(OUTPUT ${options}
    COMMAND ${CMAKE_COMMAND} -E make_directory ${made}/options
    COMMAND ${packaging}/options-of $<TARGET_FILE:${program}> ${options}
    DEPENDS ${program} ${packaging}/options-of VERBATIM)
  add_custom_command(OUTPUT ${man}.gz
    COMMAND ${ASCIIDOCTOR} -b manpage -S unsafe -a reproducible -a version=${PROJECT_VERSION} -a options=${options} -D ${made}/man
            ${manual}/man/${program}.adoc
    COMMAND gzip -9nf ${man}
    DEPENDS ${manual}/man/${program}.adoc ${options} VERBATIM)
  add_custom_command(OUTPUT ${made}/completions/bash/${program}
    COMMAND ${packaging}/completions $<TARGET_FILE:${program}> ${made}/completions
    DEPENDS ${program} ${packaging}/completions VERBATIM)
  list(APPEND outputs ${man}.gz ${made}/completions/bash/${program})
endforeach()

add_custom_target(manual ALL DEPENDS ${outputs})
install(DIRECTORY ${made}/manual DESTINATION ${CMAKE_INSTALL_DOCDIR})
install(DIRECTORY ${made}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(DIRECTORY ${made}/completions/bash/ DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(DIRECTORY ${made}/completions/zsh/ DESTINATION ${CMAKE_INSTALL_DATADIR}/zsh/vendor-completions)
install(DIRECTORY ${made}/completions/fish/ DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)
