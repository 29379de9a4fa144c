#pragma once

#include <memory>
#include <string>

#include "kortavin/base/file.h"

namespace kortavin {

// Reads a text file line by line:
//
//     CGeoTextFile reader(&file);
//     while (reader.NextLine())
//         Use(reader.GetLine());
//
// A line ends at a carriage return and takes one more byte with it, whatever that is (CR LF as a rule); a
// line feed alone ends none. What follows the last carriage return is the last line. A zero byte cuts the
// line's text, not the line. The bytes are passed on as they are.
//
// The reader needs four operations of its file: GetPosition, Seek from the beginning, GetLength and Read. For
// each line it reads chunks until one holds the line's end, goes back and reads the line; a line's bytes may
// be as many as a CString holds. A CFile itself, not a class derived from it, is scanned in its own buffer
// instead, with the same results and positions.
//
// Errors of the file pass through. What memory cannot hold is a CMemoryException; the current line is then
// still the one before.
class KORTAVIN_API CGeoTextFile {
  public:
    // No file: NextLine answers FALSE.
    CGeoTextFile();
    explicit CGeoTextFile(CFile* pFile);
    // The copy reads the same file, whose position both move, and is at the same line.
    CGeoTextFile(const CGeoTextFile& other);
    CGeoTextFile& operator=(const CGeoTextFile& other);
    // Leaves the file as it is.
    ~CGeoTextFile();

    // Attaches a file, which stays the caller's and must outlive its use here, rewinds it and takes its
    // length. Null attaches none. The current line stays.
    void SetFile(CFile* pFile);
    // Reads the line that begins where the file stands, and leaves the file behind it. FALSE, with the
    // current line unchanged, when there is no file, when the line before reached the length that the file
    // had when it was attached, or when the file has become shorter and has nothing more to read.
    BOOL NextLine();
    // The line that NextLine read last, without its end.
    CString GetLine() const;

    // Bytes of a chunk; 0 counts as 1. A change holds for readers whose first NextLine is yet to come, the
    // others keep the buffer that they have.
    static UINT m_MaxBufSize;

  protected:
    CFile* m_pFile = nullptr;
    ULONGLONG m_Position = 0;           // just behind the current line
    ULONGLONG m_LineStart = 0;          // where the current line began
    ULONGLONG m_Length = 0;             // the file's when it was attached
    std::unique_ptr<char[]> m_pBuffer;  // one chunk and a zero byte; made once, never copied
    CString m_Line;

  private:
    void MakeBuffer();
    BOOL ReadNextLine();
    BOOL ScanWindow();
    BOOL UseBlock();
    // Whether the first `nCount` bytes of the buffer hold a line's end. If so, a zero byte takes its place
    // and nSkip is what the line takes of these bytes, one more than there are if its last byte is still to
    // come.
    BOOL FineCLPairs(UINT& nCount, long& nSkip);
    void ScanChunks(std::string& text);
    void ReadBack(std::string& text, ULONGLONG textLength, ULONGLONG length);

    bool m_offersWindow = false;  // the file lets its own buffer be looked at
    UINT m_bufferSize = 0;
    std::string m_block;  // the text of a line while it is being read
};

}  // namespace kortavin

#ifndef KORTAVIN_NO_GLOBAL_NAMES
using kortavin::CGeoTextFile;
#endif
