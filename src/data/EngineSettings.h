#pragma once

#include <QString>

#include <optional>

// The data folder's choice of engine: the file "database.ini" in the data folder names a
// PostgreSQL server and database; without it the module uses the SQLite files of the folder.
//
//     [postgresql]
//     host=db.office.lan      (a host name, or the folder of the server's Unix socket)
//     port=5432               (optional)
//     database=velmora
//     user=anne               (optional: the login name when left out)
//
// A password is never kept in the data folder: the server's client library takes it from the
// user's ~/.pgpass file or the PGPASSWORD environment variable.
struct EngineSettings {
    QString host;
    int port = 5432;
    QString database;
    QString user;
    // Why the file could not be used ("" when it could); the engine reports it on first use.
    QString error;

    static constexpr const char *fileName = "database.ini";

    // The settings of the data folder (the current folder); none when it has no such file.
    static std::optional<EngineSettings> ofDataFolder();
    // The settings of another folder.
    static std::optional<EngineSettings> ofFolder(const QString &folder);
    // The settings a file's text gives; `error` names the line that is wrong.
    static EngineSettings parse(const QString &text);

private:
    static std::optional<EngineSettings> ofPath(const QString &path);
};
