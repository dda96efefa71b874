/// @file
/// The whole interface of the library.
#pragma once

#include "jw32/angle.h"
#include "jw32/angles.h"
#include "jw32/arithmetic.h"
#include "jw32/directories.h"
#include "jw32/directory_links.h"
#include "jw32/file_names.h"
#include "jw32/files.h"
#include "jw32/folders.h"
#include "jw32/frame.h"
#include "jw32/free_space.h"
#include "jw32/memory.h"
#include "jw32/mm_file.h"
#include "jw32/paths.h"
#include "jw32/shared_memory.h"
#include "jw32/system_version.h"
#include "jw32/temporary_files.h"
#include "jw32/version.h"
