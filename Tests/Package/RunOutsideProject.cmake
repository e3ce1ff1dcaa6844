# Installs the build into a folder of its own, builds the outside project against it, runs it.
function(run)
  execute_process(COMMAND ${ARGV} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${ARGV}\n${output}")
  endif()
endfunction()

set(flags "")
if(SANITIZE)
  set(flags "-fsanitize=address,undefined -fno-sanitize-recover=undefined")
endif()

file(REMOVE_RECURSE "${WORK_DIR}/prefix" "${WORK_DIR}/build")
run("${CMAKE_COMMAND}" --install "${BUILD_DIR}" --prefix "${WORK_DIR}/prefix")
run("${CMAKE_COMMAND}" -S "${SOURCE_DIR}" -B "${WORK_DIR}/build" -G "${GENERATOR}"
    -D "CMAKE_CXX_COMPILER=${COMPILER}" -D "CMAKE_BUILD_TYPE=${BUILD_TYPE}"
    -D "CMAKE_PREFIX_PATH=${WORK_DIR}/prefix" -D "CMAKE_CXX_FLAGS=${flags}")
run("${CMAKE_COMMAND}" --build "${WORK_DIR}/build")
run("${WORK_DIR}/build/outside")
