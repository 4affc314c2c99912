# The engine in a browser, whose vectors have four lanes: of the kernels, the one of that width.
set(wide_vector_options "")
set(kernel_sources fast/KernelChoiceWeb.cpp)
