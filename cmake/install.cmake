# What an integrator gets, laid out for `cmake --install` and packed by CPack: the DLL (its debug
# information split off beside it), the host program, the header, import libraries for the MinGW and
# the Microsoft linker with the .def they come from, a CMake package, and the samples.
include(CMakePackageConfigHelpers)

# The exports as a host's linker sees them: the .def without the internal names behind the aliases.
file(STRINGS ${PROJECT_SOURCE_DIR}/src/app/qrl4cfg.def def_lines)
set(export_def "")
foreach(line IN LISTS def_lines)
  string(REGEX REPLACE "^( *(\"[^\"]*\"|[^ =]+)) *=.*$" "\\1" line "${line}")
  string(APPEND export_def "${line}\n")
endforeach()
set(QRL_EXPORT_DEF ${CMAKE_BINARY_DIR}/package/qrl4cfg.def)
file(GENERATE OUTPUT ${QRL_EXPORT_DEF} CONTENT "${export_def}")

# An import library in the Microsoft format, made from that .def.
find_program(QRL_DLLTOOL NAMES llvm-dlltool llvm-dlltool-14 REQUIRED)
set(QRL_MSVC_IMPLIB ${CMAKE_BINARY_DIR}/package/qrl4cfg.lib)
add_custom_command(OUTPUT ${QRL_MSVC_IMPLIB}
                   COMMAND ${QRL_DLLTOOL} -m i386:x86-64 -D qrl4cfg.dll -d ${QRL_EXPORT_DEF} -l ${QRL_MSVC_IMPLIB}
                   DEPENDS ${QRL_EXPORT_DEF} ${PROJECT_SOURCE_DIR}/src/app/qrl4cfg.def
                   COMMENT "Import library for the Microsoft linker")
add_custom_target(qrl4cfg_msvc_implib DEPENDS ${QRL_MSVC_IMPLIB})
add_dependencies(qrl4cfg qrl4cfg_msvc_implib)

install(TARGETS qrl4cfg RUNTIME DESTINATION bin ARCHIVE DESTINATION lib)
install(TARGETS qrl4host RUNTIME DESTINATION bin)
# Installed binaries lose their debug information; the DLL's goes into a file tied to it.
install(CODE "set(QRL_OBJCOPY \"${CMAKE_OBJCOPY}\")")
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/splitdebug.cmake)
install(FILES ${PROJECT_SOURCE_DIR}/include/qrl4cfg.h DESTINATION include)
install(FILES ${QRL_MSVC_IMPLIB} ${QRL_EXPORT_DEF} DESTINATION lib)

write_basic_package_version_file(${CMAKE_BINARY_DIR}/package/qrl4cfgConfigVersion.cmake
                                 VERSION ${PROJECT_VERSION} COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_SOURCE_DIR}/cmake/qrl4cfgConfig.cmake ${CMAKE_BINARY_DIR}/package/qrl4cfgConfigVersion.cmake
        DESTINATION lib/cmake/qrl4cfg)

install(FILES ${PROJECT_SOURCE_DIR}/docs/package-readme.txt DESTINATION share/qrl4cfg RENAME README)
install(CODE "set(QRL_EMULATOR \"${CMAKE_CROSSCOMPILING_EMULATOR}\")\nset(QRL_BUILD_DIR \"${CMAKE_BINARY_DIR}\")")
install(SCRIPT ${PROJECT_SOURCE_DIR}/cmake/languagetemplate.cmake)
file(GLOB sample_files ${PROJECT_SOURCE_DIR}/samples/*.*)
install(FILES ${sample_files} DESTINATION share/qrl4cfg/samples)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/palettes ${PROJECT_SOURCE_DIR}/samples/lang DESTINATION share/qrl4cfg/samples)
install(DIRECTORY ${PROJECT_SOURCE_DIR}/samples/keyboards/ DESTINATION share/qrl4cfg/keyboards
        FILES_MATCHING PATTERN "*.kdf" PATTERN "README.md")

set(CPACK_GENERATOR ZIP)
set(CPACK_PACKAGE_NAME qrl4cfg)
set(CPACK_PACKAGE_VENDOR "${QRL_VERSION_COMPANY}")
set(CPACK_PACKAGE_FILE_NAME qrl4cfg-${PROJECT_VERSION}-win64)
set(CPACK_INCLUDE_TOPLEVEL_DIRECTORY OFF)
include(CPack)
