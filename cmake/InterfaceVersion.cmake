# The version of the interface, which clients ask for: libraries carry it in their sonames, and the CMake package accepts
# requests for it. It is the first number of the project's version, which changes with every incompatible change.
set(ORVEL_INTERFACE_VERSION "${PROJECT_VERSION_MAJOR}")
