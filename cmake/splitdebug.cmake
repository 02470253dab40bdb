# Install step: the DLL's debug information moves to qrl4cfg.dll.debug, which a debug link in the
# DLL names, so a debugger finds it while the shipped DLL stays small. The symbol table goes too: a
# DLL is found by its exports, and the symbols alone would keep it over 3 MB. The host program just
# loses both.
set(bin "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/bin")
execute_process(COMMAND ${QRL_OBJCOPY} --only-keep-debug ${bin}/qrl4cfg.dll ${bin}/qrl4cfg.dll.debug
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${QRL_OBJCOPY} --strip-all --add-gnu-debuglink=${bin}/qrl4cfg.dll.debug ${bin}/qrl4cfg.dll
                COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${QRL_OBJCOPY} --strip-all ${bin}/qrl4host.exe COMMAND_ERROR_IS_FATAL ANY)
