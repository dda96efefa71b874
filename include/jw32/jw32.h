/// @file
/// The whole interface of the library.
#pragma once

#include "angle.h"
#include "angles.h"
#include "arithmetic.h"
#include "directories.h"
#include "file_names.h"
#include "files.h"
#include "frame.h"
#include "paths.h"
#include "system_version.h"
