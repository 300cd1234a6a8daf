# Starts from nothing, so that a file left by an earlier run cannot hide one that is not installed any more.
file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix --config ${CONFIG}
                COMMAND_ERROR_IS_FATAL ANY)
