# The package as an integrator meets it: this build installed into a fresh folder, the DLL's size and
# imports, a CMake host project that finds it run under Wine, and a host linked the Microsoft way.
# Arguments: BUILD_DIR, PACKAGE_DIR, TOOLCHAIN, EMULATOR, OBJDUMP, CLANG, LLD_LINK.
set(work ${BUILD_DIR}/package-test)
set(prefix ${work}/qrl4cfg)
set(dll ${prefix}/bin/qrl4cfg.dll)
file(REMOVE_RECURSE ${work})

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGN}\n${out}\n${err}")
  endif()
  string(REPLACE "\r\n" "\n" out "${out}")  # a Windows program's text lines end in CR LF
  set(out "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
# The DLL lives in someone else's process: small, with nothing but system DLLs behind it.
file(SIZE ${dll} size)
if(size GREATER_EQUAL 3145728)
  message(FATAL_ERROR "qrl4cfg.dll has ${size} bytes")
endif()
file(READ ${prefix}/share/qrl4cfg/template.lang template)
if(NOT template MATCHES "\nIDD_GKEYMAP=Configure Keyboard\r?\n")
  message(FATAL_ERROR "the language template lacks the keys of the dialogs")
endif()
run(${OBJDUMP} -p -h ${dll})
string(REGEX REPLACE "DLL Name: (ADVAPI32|COMCTL32|comdlg32|CRYPT32|GDI32|KERNEL32|msvcrt|SHELL32|USER32|SHLWAPI)\\.dll" "" rest "${out}")
string(REGEX MATCH "DLL Name: [^\n]*" other "${rest}")
if(other OR NOT out MATCHES "\\.gnu_debuglink")
  message(FATAL_ERROR "qrl4cfg.dll: an import not of the system's (${other}), or no debug link")
endif()

run(${CMAKE_COMMAND} -S ${PACKAGE_DIR}/consumer -B ${work}/consumer -G Ninja -DCMAKE_BUILD_TYPE=Release
    -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN} -DCMAKE_PREFIX_PATH=${prefix})
run(${CMAKE_COMMAND} --build ${work}/consumer)
run(${CMAKE_COMMAND} -E env QRL_WINE_BUILD_DIR=${BUILD_DIR} ${EMULATOR} ${work}/consumer/consumer.exe
    Z:${prefix}/share/qrl4cfg/samples/comms_request.xml)
set(expected "code 0 status 0\n<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<Config>\n  <Data/>\n</Config>\n")
if(NOT out STREQUAL expected)
  message(FATAL_ERROR "the consumer's run gave\n${out}")
endif()

# qrl4cfg.lib as the Microsoft linker takes it: clang and lld-link in its manner, no MinGW involved.
run(${CLANG} --target=x86_64-pc-windows-msvc -c ${PACKAGE_DIR}/msvchost.cpp -o ${work}/msvchost.obj)
run(${LLD_LINK} /nodefaultlib /entry:mainCRTStartup /subsystem:console ${work}/msvchost.obj ${prefix}/lib/qrl4cfg.lib
    /out:${work}/msvchost.exe)
