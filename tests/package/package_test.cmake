# The package as an integrator meets it: this build installed into a fresh folder, the DLL checked
# for size and imports, and a host project that finds it with find_package built and run under Wine.
# Arguments: BUILD_DIR, CONSUMER_DIR, TOOLCHAIN, EMULATOR, OBJDUMP.
set(work ${BUILD_DIR}/package-test)
set(prefix ${work}/qrl4cfg)
file(REMOVE_RECURSE ${work})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${out}\n${err}")
  endif()
  # A Windows program's text output ends its lines with CR LF.
  string(REPLACE "\r\n" "\n" out "${out}")
  set(out "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})

# The DLL lives in someone else's process: nothing but system DLLs may come with it.
set(dll ${prefix}/bin/qrl4cfg.dll)
file(SIZE ${dll} size)
if(size GREATER_EQUAL 3145728)
  message(FATAL_ERROR "qrl4cfg.dll has ${size} bytes")
endif()
run(${OBJDUMP} -p ${dll})
string(REGEX MATCHALL "DLL Name: [^\n]+" imports "${out}")
foreach(import IN LISTS imports)
  string(TOLOWER "${import}" import)
  if(NOT import MATCHES "^dll name: (kernel32|user32|gdi32|comctl32|comdlg32|advapi32|shell32|crypt32|shlwapi|msvcrt|ole32)\\.dll$"
     AND NOT import MATCHES "^dll name: api-ms-win-")
    message(FATAL_ERROR "qrl4cfg.dll imports a DLL that is not the system's: ${import}")
  endif()
endforeach()
run(${OBJDUMP} -h ${dll})
if(NOT out MATCHES "\\.gnu_debuglink" OR out MATCHES "\\.debug_info")
  message(FATAL_ERROR "the installed DLL should hold a debug link and no debug information")
endif()

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${work}/consumer -G Ninja -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${work}/consumer)
run(${CMAKE_COMMAND} -E env QRL_WINE_BUILD_DIR=${BUILD_DIR} ${EMULATOR} ${work}/consumer/consumer.exe
    Z:${prefix}/share/qrl4cfg/samples/comms_request.xml)
set(expected "code 0 status 0\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data/>\n</Config>\n")
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "the consumer's run gave\n${out}")
endif()
