# tavrin_program_runner(<var> <target>): sets <var> to a command that runs the
# executable <target> when started from a program of the build machine (for
# example a test that runs it with std::system). Natively that is the
# program itself; in a cross build a generated script that starts it through
# CMAKE_CROSSCOMPILING_EMULATOR, since the build machine cannot execute it.
function(tavrin_program_runner var target)
  if(NOT CMAKE_CROSSCOMPILING_EMULATOR)
    set(${var} $<TARGET_FILE:${target}> PARENT_SCOPE)
    return()
  endif()
  list(JOIN CMAKE_CROSSCOMPILING_EMULATOR " " emulator)
  set(runner ${CMAKE_BINARY_DIR}/runners/${target})
  file(GENERATE OUTPUT ${runner}
    CONTENT "#!/bin/sh\nexec ${emulator} \"$<TARGET_FILE:${target}>\" \"$@\"\n"
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE
                     WORLD_READ WORLD_EXECUTE)
  set(${var} ${runner} PARENT_SCOPE)
endfunction()
