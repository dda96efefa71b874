// Files, directories, searches and volumes.
#pragma once

#include "handleapi.h"
#include "minwinbase.h"
#include "winnt.h"

inline constexpr DWORD GENERIC_ALL = 0x10000000;
inline constexpr DWORD FILE_READ_DATA = 0x0001;
inline constexpr DWORD FILE_WRITE_DATA = 0x0002;
inline constexpr DWORD FILE_APPEND_DATA = 0x0004;

inline constexpr DWORD CREATE_NEW = 1;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD OPEN_ALWAYS = 4;
inline constexpr DWORD TRUNCATE_EXISTING = 5;

inline constexpr DWORD FILE_FLAG_BACKUP_SEMANTICS = 0x02000000;
inline constexpr DWORD FILE_FLAG_DELETE_ON_CLOSE = 0x04000000;
inline constexpr DWORD FILE_FLAG_OPEN_REPARSE_POINT = 0x00200000;

inline constexpr DWORD FILE_BEGIN = 0;
inline constexpr DWORD FILE_CURRENT = 1;
inline constexpr DWORD FILE_END = 2;

inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr DWORD INVALID_FILE_SIZE = 0xFFFFFFFF;
inline constexpr DWORD INVALID_SET_FILE_POINTER = 0xFFFFFFFF;

inline constexpr UINT DRIVE_UNKNOWN = 0;
inline constexpr UINT DRIVE_NO_ROOT_DIR = 1;
inline constexpr UINT DRIVE_REMOVABLE = 2;
inline constexpr UINT DRIVE_FIXED = 3;
inline constexpr UINT DRIVE_REMOTE = 4;
inline constexpr UINT DRIVE_CDROM = 5;
inline constexpr UINT DRIVE_RAMDISK = 6;

WINBASEAPI HANDLE WINAPI CreateFileW(LPCWSTR name, DWORD access, DWORD share,
                                     LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                     HANDLE templateFile);
WINBASEAPI HANDLE WINAPI CreateFileA(LPCSTR name, DWORD access, DWORD share,
                                     LPSECURITY_ATTRIBUTES security, DWORD disposition, DWORD flags,
                                     HANDLE templateFile);
WINBASEAPI BOOL WINAPI ReadFile(HANDLE file, LPVOID target, DWORD count, LPDWORD moved,
                                LPOVERLAPPED overlapped);
WINBASEAPI BOOL WINAPI WriteFile(HANDLE file, LPCVOID source, DWORD count, LPDWORD moved,
                                 LPOVERLAPPED overlapped);
WINBASEAPI DWORD WINAPI SetFilePointer(HANDLE file, LONG distance, PLONG distanceHigh,
                                       DWORD origin);
WINBASEAPI BOOL WINAPI SetEndOfFile(HANDLE file);
WINBASEAPI DWORD WINAPI GetFileSize(HANDLE file, LPDWORD sizeHigh);
WINBASEAPI BOOL WINAPI DeleteFileW(LPCWSTR name);

WINBASEAPI DWORD WINAPI GetFileAttributesW(LPCWSTR name);
WINBASEAPI DWORD WINAPI GetFileAttributesA(LPCSTR name);
WINBASEAPI BOOL WINAPI SetFileAttributesW(LPCWSTR name, DWORD attributes);
WINBASEAPI BOOL WINAPI SetFileAttributesA(LPCSTR name, DWORD attributes);

WINBASEAPI HANDLE WINAPI FindFirstFileW(LPCWSTR name, LPWIN32_FIND_DATAW record);
WINBASEAPI BOOL WINAPI FindNextFileW(HANDLE search, LPWIN32_FIND_DATAW record);
WINBASEAPI BOOL WINAPI FindNextFileA(HANDLE search, LPWIN32_FIND_DATAA record);
WINBASEAPI BOOL WINAPI FindClose(HANDLE search);

WINBASEAPI BOOL WINAPI CreateDirectoryW(LPCWSTR name, LPSECURITY_ATTRIBUTES security);
WINBASEAPI BOOL WINAPI RemoveDirectoryW(LPCWSTR name);

WINBASEAPI DWORD WINAPI GetFullPathNameW(LPCWSTR name, DWORD size, LPWSTR buffer, LPWSTR* lastPart);
WINBASEAPI DWORD WINAPI GetFullPathNameA(LPCSTR name, DWORD size, LPSTR buffer, LPSTR* lastPart);
WINBASEAPI DWORD WINAPI GetShortPathNameA(LPCSTR name, LPSTR buffer, DWORD size);
WINBASEAPI DWORD WINAPI GetLongPathNameA(LPCSTR name, LPSTR buffer, DWORD size);
WINBASEAPI DWORD WINAPI GetCurrentDirectoryA(DWORD size, LPSTR buffer);
WINBASEAPI BOOL WINAPI SetCurrentDirectoryA(LPCSTR name);

WINBASEAPI UINT WINAPI GetDriveTypeA(LPCSTR root);
WINBASEAPI BOOL WINAPI GetVolumeInformationW(LPCWSTR root, LPWSTR label, DWORD labelSize,
                                             LPDWORD serial, LPDWORD longestComponent,
                                             LPDWORD flags, LPWSTR fileSystem, DWORD systemSize);

// Of any directory on the drive; null: of the current one.
WINBASEAPI BOOL WINAPI GetDiskFreeSpaceExA(LPCSTR directory, PULARGE_INTEGER available,
                                           PULARGE_INTEGER total, PULARGE_INTEGER free);
WINBASEAPI BOOL WINAPI GetDiskFreeSpaceA(LPCSTR root, LPDWORD sectorsPerCluster,
                                         LPDWORD bytesPerSector, LPDWORD freeClusters,
                                         LPDWORD totalClusters);
