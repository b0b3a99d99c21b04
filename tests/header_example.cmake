# Makes a source out of the example in the comment of solver/solver.h: its lines stand after "//"
# and five blanks or more, the include among them first.
function(kavit_header_example header source)
  set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${header})
  file(READ ${header} text)
  # Code lines get a mark, lines without it go, then the mark goes.
  string(REGEX REPLACE "\n//     ([^\n]*)" "\n@\\1" text "\n${text}")
  string(REGEX REPLACE "\n[^@\n][^\n]*" "" text "${text}")
  string(REGEX REPLACE "\n+@?" "\n" text "${text}")
  string(REGEX MATCH "#include [^\n]*" include "${text}")
  string(REPLACE "${include}" "" text "${text}")
  if(NOT include OR NOT text MATCHES "Search")
    message(FATAL_ERROR "${header} holds no example")
  endif()
  file(CONFIGURE OUTPUT ${source} @ONLY CONTENT
"#include <cstdio>

${include}

void HeaderExample(const kavit::Board& board);

void HeaderExample(const kavit::Board& board) {${text}}
")
endfunction()
