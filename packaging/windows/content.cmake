# What lies in the folder of an installation on Windows: everything beside the programs, so that it also runs from a stick.
set(VK32_MADE_MANUAL ${PROJECT_SOURCE_DIR}/build/package/packaging/manual CACHE PATH "The manual, as made on this machine")
set(licences /usr/share/doc)
get_target_property(qt_core Qt6::Core IMPORTED_LOCATION_RELEASE)
cmake_path(GET qt_core PARENT_PATH qt_libraries)
cmake_path(GET qt_libraries PARENT_PATH qt)

install(TARGETS vk32 vk32-cli vk32-script vk32-sim RUNTIME DESTINATION .)
install(FILES README.txt DESTINATION .)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/examples DESTINATION .)
install(DIRECTORY ${VK32_MADE_MANUAL}/ DESTINATION manual)
install(FILES ${qt}/plugins/platforms/qwindows.dll DESTINATION platforms)
install(FILES ../copyright DESTINATION licences RENAME vk32.txt)
install(FILES ${licences}/fonts-dejavu-core/copyright DESTINATION licences RENAME dejavu.txt)
install(FILES ${licences}/gcc-mingw-w64-base/copyright DESTINATION licences RENAME gcc.txt)
install(FILES ${licences}/mingw-w64-common/copyright DESTINATION licences RENAME mingw-w64.txt)
install(DIRECTORY ${qt}/licences/ DESTINATION licences/qt)

# The libraries that all of it needs and Windows does not have.
find_file(thread_library libwinpthread-1.dll PATHS ${CMAKE_FIND_ROOT_PATH} PATH_SUFFIXES lib bin NO_DEFAULT_PATH
          NO_CMAKE_FIND_ROOT_PATH REQUIRED)
execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=libstdc++-6.dll OUTPUT_VARIABLE standard_library
                OUTPUT_STRIP_TRAILING_WHITESPACE COMMAND_ERROR_IS_FATAL ANY)
cmake_path(GET thread_library PARENT_PATH thread_libraries)
cmake_path(GET standard_library PARENT_PATH standard_libraries)
install(CODE "
  execute_process(COMMAND \"${CMAKE_CURRENT_SOURCE_DIR}/add-libraries\" \"\${CMAKE_INSTALL_PREFIX}\" \"${qt_libraries}\"
                          \"${standard_libraries}\" \"${thread_libraries}\" COMMAND_ERROR_IS_FATAL ANY)
")
