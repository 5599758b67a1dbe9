#pragma once

struct ListOpening;

/// Opens the mail screen with the rows ticked 対象; refuses rows without 連絡. True when rows have other
/// marks now.
bool openMailScreen(const ListOpening &opening);
