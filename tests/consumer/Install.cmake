# Starts from nothing, so that a file left by an earlier run cannot hide one that is not installed any more.
file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/prefix --config ${CONFIG}
                COMMAND_ERROR_IS_FATAL ANY)

# The manual page of kyimg, as text or compressed, but once.
if(MANUAL)
  file(GLOB pages ${WORK}/prefix/${MANUAL}*)
  list(LENGTH pages count)
  if(NOT count EQUAL 1)
    message(FATAL_ERROR "There should be one ${MANUAL}, not ${count}: ${pages}")
  endif()
endif()
