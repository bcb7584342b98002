# Read by CPack before each generator: the time that packages are dated, whenever they are made.
set(ENV{SOURCE_DATE_EPOCH} 1700000000)
