# Checks only the trust material: cmake -D... -P check_trust_material.cmake
cmake_minimum_required(VERSION 3.21)
include("${CMAKE_CURRENT_LIST_DIR}/../../cmake/TrustMaterial.cmake")
sealkeeper_refuse_or_warn_of_development_trust()
