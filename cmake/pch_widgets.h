#pragma once
#include "pch_core.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QDialog>
#include <QLabel>
#include <QMainWindow>
#include <QPainter>
#include <QPushButton>
#include <QTableView>
#include <QWidget>
