# Install step: the language template, written by the installed host program itself, so that it holds
# every text this build looks up. The host program is a Windows one: it runs under the build's emulator.
set(root "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}")
file(MAKE_DIRECTORY ${root}/share/qrl4cfg)
execute_process(COMMAND ${CMAKE_COMMAND} -E env QRL_WINE_BUILD_DIR=${QRL_BUILD_DIR} ${QRL_EMULATOR} ${root}/bin/qrl4host.exe
                        --language-template Z:${root}/share/qrl4cfg/template.lang
                COMMAND_ERROR_IS_FATAL ANY)
