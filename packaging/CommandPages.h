// What the manual and bash know of velmora-cli, written from its tables of commands and options.
#pragma once

#include <QString>

/// The options of every command, as roff for the manual page.
QString CommonOptionsPage();

/// Every command with its options, as roff for the manual page, a heading for each group.
QString CommandsPage();

/// The options of every command, as one row of the table that velmora-cli.bash describes.
QString CommonOptionsRow();

/// The rows of that table, one a command.
QString CommandRows();
