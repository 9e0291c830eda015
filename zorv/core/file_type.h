#pragma once

#include <fstream>
#include <string>

#include "zorv/export.h"

/// The kinds of files that the system knows, named after their extensions.
enum eZorvFiletype : int {
    eZorvFileProX = 0,
    eZorvFilePro = 1,
    eZorvFileCoo = 2,
    eZorvFileCoo2 = 3,
    eZorvFileAor = 4,
    eZorvFileSip = 5,
    eZorvFileImo = 6,
    eZorvFileAob = 7,
    eZorvFileLog = 8,
    eZorvFileMlg = 9,
    eZorvFileRes = 10,
    eZorvFileDres = 11,
    eZorvFileCam = 12,
    eZorvFileAtimo = 13,
    eZorvFileAutopt = 14,
    eZorvFileKorrel = 15,
    eZorvFileHdimo = 16,
    eZorvFilePly = 17,
    eZorvFilePts = 18,
    eZorvFileXyz = 19,
    eZorvFileLas = 20,
    eZorvFileLaz = 21,
    eZorvFileE57 = 22,
    eZorvFileZoptc = 23,
    eZorvFileDwg = 24,
    eZorvFileDxf = 25,
    eZorvFileGsi = 26,
    eZorvFileZip = 27,
    eZorvFileXml = 28,
    eZorvFileTxt = 29,
    eZorvFileCsv = 30,
    eZorvFileCmi = 31,
    eZorvFilePixelImo = 32,
    eZorvFileCooGsiImo = 33,
    eZorvFileJpg = 34,
    eZorvFileNone = 35,
};

/// The extension with its dot, ".coo"; empty for eZorvFileNone and for any other value.
ZORV_API std::wstring GetZoExtension(eZorvFiletype type);

/// Tells what a file is: from its name, and for the text files of the system from its first token.
class ZORV_API ZoDetectZorvFiles {
  public:
    /// As Detector.
    explicit ZoDetectZorvFiles(const std::wstring& file) { Detector(file); }
    explicit ZoDetectZorvFiles(const wchar_t* file) { Detector(file ? file : L""); }

    /// Sets both fields anew. Types with a rule for the first token are opened; cloud, survey, table and picture files
    /// are valid by their name alone, even when they do not exist; the others never are.
    void Detector(const std::wstring& file);
    /// `expected` when the first token is one that such a file begins with, or the file holds none at all; else
    /// eZorvFileNone.
    eZorvFiletype DetectFromContent(std::basic_fstream<char>& file, eZorvFiletype expected);

    /// What the name says, without regard to case.
    eZorvFiletype DetectByExtension() const { return byExtension; }
    /// The same where the content agrees, else eZorvFileNone.
    eZorvFiletype IsValidZorvFile() const { return validated; }

    eZorvFiletype byExtension = eZorvFileNone;
    eZorvFiletype validated = eZorvFileNone;
};
