#pragma once

#include <string>
#include <vector>

/// The GPS position of the site in every form in which it can become a point: head, then a row for each.
std::vector<std::vector<std::string>> SitePositionTable(double latitude, double longitude, double altitude);
