# Installs the library into a folder of its own, builds a small program against what lies there, and
# lets it solve the first example. Then looks whether the manual and the completions know every
# option of kavit-solve, when that was built.
#
#   cmake -DSOURCE=... -DBUILD=... -DWORK=... -DCOMPILER=... -DFLAGS=... -P install_test.cmake

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE error)
  if(NOT result STREQUAL 0)
    message(FATAL_ERROR "${ARGN}\nended with ${result}\n${output}${error}")
  endif()
  set(output "${output}" PARENT_SCOPE)
endfunction()

file(REMOVE_RECURSE ${WORK})
run(${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix --component development)
run(${CMAKE_COMMAND} -S ${SOURCE}/tests/install -B ${WORK}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${WORK}/prefix -DCMAKE_CXX_COMPILER=${COMPILER} -DCMAKE_CXX_FLAGS=${FLAGS})
run(${CMAKE_COMMAND} --build ${WORK}/build)
run(${WORK}/build/ten_lines ${SOURCE}/levels/01-first-steps.xsb)
if(NOT output STREQUAL "rRRR\n")
  message(FATAL_ERROR "the program found another solution: ${output}")
endif()

# Nothing that is installed may know where it was built.
file(GLOB_RECURSE texts ${WORK}/prefix/*.cmake ${WORK}/prefix/*.h)
foreach(text ${texts})
  file(READ ${text} content)
  string(FIND "${content}" "${SOURCE}" found)
  if(NOT found EQUAL -1)
    message(FATAL_ERROR "${text} names the source folder")
  endif()
endforeach()

if(SOLVE_PROGRAM)
  run(${SOLVE_PROGRAM} --help)
  string(REGEX MATCHALL "\n +(-h,)?--[a-z-]+" options "${output}")
  list(LENGTH options count)
  if(count LESS 10)
    message(FATAL_ERROR "found only ${count} options in the help")
  endif()
  file(READ ${SOURCE}/packaging/kavit-solve.1.in manual)
  string(REPLACE "\\-" "-" manual "${manual}")
  file(READ ${SOURCE}/packaging/kavit-solve.zsh completion)
  foreach(option ${options})
    string(REGEX MATCH "--[a-z-]+" option "${option}")
    foreach(where manual completion)
      string(FIND "${${where}}" "${option}" found)
      if(found EQUAL -1)
        message(SEND_ERROR "the ${where} of kavit-solve does not know ${option}")
      endif()
    endforeach()
  endforeach()
endif()
