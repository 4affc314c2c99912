# The engine on Linux, where the stack is aligned for vectors of every width.
set(wide_vector_options "")
